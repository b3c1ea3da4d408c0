#pragma once

#include <QString>

#include "document/Uuid.h"

namespace orvane {

// One showing of the QR sheet: a fresh id each time, so the sheet can be
// presented for an optional value and shown again for the same URL.
struct QRCodeURL {
    Uuid id = Uuid::generate();
    QString url;

    // What the "Show QR Code" button does before the sheet comes up: builds
    // the access URL and logs its parts for diagnosis.
    static QRCodeURL forServer(const QString& localIP, quint16 serverPort);
};

}  // namespace orvane
