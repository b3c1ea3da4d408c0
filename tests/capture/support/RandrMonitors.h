#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace orvane::test {

// RandR monitors and atoms on a test's private X server, set with the real
// xrandr tool and read back through a connection of its own.
class RandrMonitors {
public:
    explicit RandrMonitors(QByteArray displayName) : displayName_(std::move(displayName)) {}

    // Runs xrandr with these arguments; empty on success, else its complaint.
    QString xrandr(const QStringList& arguments) const;
    // The screen split like TestDisplayServer's: "Left" on the one output,
    // "Right" on none.
    QString splitLeftRight() const;
    // The id of the output of that name, 0 when there is none.
    std::uint32_t outputId(const QByteArray& name) const;
    // The atom of that name, interned when asked to, else XCB_NONE if the
    // server has none yet.
    xcb_atom_t atom(const QByteArray& name, bool intern) const;
    // Sets a property on the root window that no one watches.
    void touchRootProperty(const QByteArray& name) const;

private:
    QByteArray displayName_;
};

}  // namespace orvane::test
