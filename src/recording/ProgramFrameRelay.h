#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <unordered_map>

#include "document/Source.h"
#include "document/Uuid.h"

namespace orvane {

class LiveFrameTable;
class SourceCaptures;
class StreamManager;

// Keeps a LiveFrameTable showing the live pictures of the program scene's
// sources, from the console's shared captures: the first ask starts a
// source's capture, and every new picture is handed over as it arrives (a
// QImage shares its pixels, so this copies nothing). The recorder's thread
// then reads the table without ever waiting for the main thread.
//
// The captures must keep running while the program shows them: whoever
// calls SourceCaptures::retainOnly includes programSourceIds().
class ProgramFrameRelay : public QObject {
    Q_OBJECT

public:
    ProgramFrameRelay(StreamManager& session, SourceCaptures& captures, std::shared_ptr<LiveFrameTable> table,
                      QObject* parent = nullptr);

    std::vector<Uuid> programSourceIds() const;

private:
    void rebind();
    void refresh(const Uuid& sourceId);

    QPointer<StreamManager> session_;
    QPointer<SourceCaptures> captures_;
    std::shared_ptr<LiveFrameTable> table_;
    std::unordered_map<Uuid, Source> program_;  // the program scene's sources by id
};

}  // namespace orvane
