#include "console/ServerAddress.h"

#include <QMetaProperty>

namespace orvane {

bool ServerAddress::isRunning(const QObject* server) {
    return server && server->property("isServerRunning").toBool();
}

QString ServerAddress::url(const QObject* server) {
    if (!server) return {};
    return QStringLiteral("http://%1:%2")
        .arg(server->property("localIP").toString())
        .arg(server->property("serverPort").toUInt());
}

void ServerAddress::watch(QObject* server, QObject* receiver, const char* slot) {
    if (!server) return;
    const QMetaObject* meta = server->metaObject();
    const int slotIndex = receiver->metaObject()->indexOfSlot(QMetaObject::normalizedSignature(slot).constData());
    if (slotIndex < 0) return;
    const QMetaMethod target = receiver->metaObject()->method(slotIndex);
    for (const char* name : {"isServerRunning", "localIP", "serverPort"}) {
        const int index = meta->indexOfProperty(name);
        if (index < 0) continue;
        const QMetaProperty property = meta->property(index);
        if (property.hasNotifySignal())
            QObject::connect(server, property.notifySignal(), receiver, target, Qt::UniqueConnection);
    }
}

}  // namespace orvane
