#include "support/TestDisplayServer.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QProcess>

#include <chrono>
#include <cstring>
#include <thread>

namespace orvane::test {

namespace {

bool windowManagerRunning(const QByteArray& display) {
    xcb_connection_t* c = xcb_connect(display.constData(), nullptr);
    bool found = false;
    if (!xcb_connection_has_error(c)) {
        const char* name = "_NET_SUPPORTING_WM_CHECK";
        xcb_intern_atom_reply_t* atom =
            xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr);
        xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
        if (atom) {
            xcb_get_property_reply_t* prop = xcb_get_property_reply(
                c, xcb_get_property(c, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1), nullptr);
            found = prop && xcb_get_property_value_length(prop) == 4;
            free(prop);
            free(atom);
        }
    }
    xcb_disconnect(c);
    return found;
}

// Maps a probe window and waits until the window manager lists it: only
// then are windows that tests map sure to be managed, not slipped in while
// the manager is still starting up.
bool windowManagerManages(const QByteArray& display, std::chrono::steady_clock::time_point deadline) {
    xcb_connection_t* c = xcb_connect(display.constData(), nullptr);
    if (xcb_connection_has_error(c)) {
        xcb_disconnect(c);
        return false;
    }
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const char* name = "_NET_CLIENT_LIST";
    xcb_intern_atom_reply_t* atom =
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr);
    const xcb_window_t probe = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, probe, screen->root, 0, 0, 10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen->root_visual, 0, nullptr);
    xcb_map_window(c, probe);
    xcb_flush(c);
    bool listed = false;
    while (atom && !listed && std::chrono::steady_clock::now() < deadline) {
        xcb_get_property_reply_t* prop = xcb_get_property_reply(
            c, xcb_get_property(c, 0, screen->root, atom->atom, XCB_ATOM_WINDOW, 0, 1024), nullptr);
        if (prop) {
            const auto* windows = static_cast<const xcb_window_t*>(xcb_get_property_value(prop));
            const int count = xcb_get_property_value_length(prop) / 4;
            for (int i = 0; i < count; ++i) listed = listed || windows[i] == probe;
            free(prop);
        }
        if (!listed) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    free(atom);
    xcb_destroy_window(c, probe);
    xcb_flush(c);
    xcb_disconnect(c);
    return listed;
}

}  // namespace

QString TestDisplayServer::start(bool withWindowManager, bool splitMonitors, QSize screenSize) {
    runtime_ = std::make_unique<QTemporaryDir>(QStringLiteral("/tmp/orvane-capture-XXXXXX"));
    if (!runtime_->isValid()) return QStringLiteral("no temporary directory");
    const std::string dir = runtime_->path().toStdString();

    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return QStringLiteral("pipe failed");
    // -displayfd: the server picks a free display number and writes it
    // here once it accepts connections, so parallel tests never collide.
    const std::string geometry =
        std::to_string(screenSize.width()) + "x" + std::to_string(screenSize.height()) + "x24";
    const bool started = xvfb_.start({"Xvfb", "-displayfd", std::to_string(fds[1]), "-screen", "0", geometry,
                                      "-noreset", "-nolisten", "tcp"},
                                     {{"XDG_RUNTIME_DIR", dir}}, fds[1], dir + "/xvfb.log");
    ::close(fds[1]);
    if (!started) {
        ::close(fds[0]);
        return QStringLiteral("Xvfb did not start");
    }
    std::string number;
    pollfd p{fds[0], POLLIN, 0};
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < deadline) {
        if (::poll(&p, 1, 100) <= 0) continue;
        char buffer[16];
        const ssize_t n = ::read(fds[0], buffer, sizeof buffer);
        if (n <= 0) break;
        number.append(buffer, static_cast<std::size_t>(n));
        if (number.find('\n') != std::string::npos) break;
    }
    ::close(fds[0]);
    while (!number.empty() && (number.back() == '\n' || number.back() == ' ')) number.pop_back();
    if (number.empty()) return QStringLiteral("Xvfb gave no display number");
    displayName_ = QByteArray(":") + QByteArray::fromStdString(number);

    if (splitMonitors) {
        for (const QStringList& args : {
                 QStringList{"--setmonitor", "Left", "960/254x1080/286+0+0", "screen"},
                 QStringList{"--setmonitor", "Right", "960/254x1080/286+960+0", "none"},
                 QStringList{"--output", "screen", "--primary"}}) {
            const QString failure = runTool(QStringList{"xrandr"} + args);
            if (!failure.isEmpty()) return failure;
        }
    }

    if (withWindowManager) {
        if (!openbox_.start({"openbox", "--sm-disable"},
                            {{"DISPLAY", displayName_.toStdString()},
                             {"XDG_RUNTIME_DIR", dir},
                             {"HOME", dir},
                             {"XDG_CONFIG_HOME", dir + "/config"}},
                            -1, dir + "/openbox.log"))
            return QStringLiteral("openbox did not start");
        const auto wmDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!windowManagerRunning(displayName_)) {
            if (std::chrono::steady_clock::now() > wmDeadline) return QStringLiteral("openbox did not come up");
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        // Early maps can slip past a manager that is still starting: retry.
        bool manages = false;
        for (int attempt = 0; attempt < 5 && !manages; ++attempt)
            manages = windowManagerManages(displayName_, std::chrono::steady_clock::now() + std::chrono::seconds(2));
        if (!manages) return QStringLiteral("openbox does not manage windows");
    }
    return {};
}

QString TestDisplayServer::runTool(const QStringList& argv) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(displayName_));
    process.setProcessEnvironment(env);
    process.start(argv.first(), argv.mid(1));
    if (!process.waitForFinished(10000) || process.exitCode() != 0)
        return argv.join(' ') + QStringLiteral(" failed: ") + QString::fromLocal8Bit(process.readAllStandardError());
    return {};
}

void TestDisplayServer::stop() {
    openbox_.stop();
    xvfb_.stop();
}

}  // namespace orvane::test
