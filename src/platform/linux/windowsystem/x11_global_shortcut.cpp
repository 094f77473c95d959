#include "platform/linux/windowsystem/x11_global_shortcut.h"

#include "platform/linux/windowsystem/x11_keyboard.h"
#include "platform/linux/windowsystem/xcb_memory.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <utility>

namespace zenlot {

namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(shortcutLog, "zenlot.shortcut")

constexpr auto kPauseBeforeRetry = 10s;

// Numbers of the X protocol.
constexpr xcb_keysym_t kSymbolP = 0x0070;
constexpr xcb_keysym_t kSymbolAlt = 0xffe9;
constexpr xcb_keysym_t kSymbolNumLock = 0xff7f;
constexpr xcb_keycode_t kUsualKeyForP = 33;
constexpr std::uint16_t kUsualAlt = XCB_MOD_MASK_1;
constexpr std::uint16_t kModifierBits = 0x00ff; // beside them a state holds buttons and the layout
constexpr std::uint8_t kXkbNewKeyboard = 0;
constexpr std::uint8_t kXkbNewMap = 1;

struct Grab {
    xcb_window_t root;
    xcb_keycode_t key;
    std::uint16_t modifiers;
};

std::uint8_t xkbEventType(xcb_connection_t& connection) {
    static constexpr std::string_view kName = "XKEYBOARD";
    const XcbPointer<xcb_query_extension_reply_t> extension(xcb_query_extension_reply(
        &connection, xcb_query_extension(&connection, kName.size(), kName.data()), nullptr));
    return extension && extension->present ? extension->first_event : 0;
}

class GrabbedKey final : public GlobalShortcut::Monitor, public QAbstractNativeEventFilter {
  public:
    GrabbedKey(xcb_connection_t& connection, GlobalShortcut::Handler handler)
        : connection_(connection), xkbEvent_(xkbEventType(connection)),
          handler_(std::move(handler)) {
        regrabTimer_.setSingleShot(true);
        QObject::connect(&regrabTimer_, &QTimer::timeout, &context_, [this] {
            release();
            grab();
        });
        QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &context_,
                         [this](const QWindow* window) {
                             if (window)
                                 release();
                             regrabTimer_.start(0ms);
                         });
        grab();
        qGuiApp->installNativeEventFilter(this);
    }
    GrabbedKey(const GrabbedKey&) = delete;
    GrabbedKey& operator=(const GrabbedKey&) = delete;
    ~GrabbedKey() override { release(); }

    // Never keeps an event from the toolkit, which takes the time of the press from it. That a
    // window with the keyboard was closed is heard here only: the toolkit has no signal for it.
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override {
        if (type != "xcb_generic_event_t")
            return false;
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        const unsigned eventType = event->response_type & 0x7fU; // without the mark of sent events
        if (event->response_type == XCB_KEY_PRESS) {
            handlePress(*reinterpret_cast<const xcb_key_press_event_t*>(event));
        } else if (event->response_type == XCB_KEY_RELEASE) {
            lastRelease_ = reinterpret_cast<const xcb_key_release_event_t*>(event)->time;
        } else if (eventType == XCB_FOCUS_OUT || eventType == XCB_MAPPING_NOTIFY ||
                   (xkbEvent_ != 0 && eventType == xkbEvent_ &&
                    (event->pad0 == kXkbNewKeyboard || event->pad0 == kXkbNewMap))) {
            regrabTimer_.start(0ms); // one change brings several events
        }
        return false;
    }

  private:
    void handlePress(const xcb_key_press_event_t& press) {
        const auto modifiers = static_cast<std::uint16_t>(press.state & kModifierBits);
        const bool isShortcut = std::ranges::any_of(grabs_, [&](const Grab& grab) {
            return grab.root == press.event && grab.key == press.detail &&
                   grab.modifiers == modifiers;
        });
        // A key that is held down is released and pressed again and again, both at the same time.
        if (isShortcut && press.time != lastRelease_)
            QMetaObject::invokeMethod(&context_, handler_, Qt::QueuedConnection);
    }

    // With the keyboard in a window of our own, keys are that window's.
    void grab() {
        if (QGuiApplication::focusWindow())
            return;
        const X11Keyboard keyboard(connection_);
        const std::uint16_t alt = keyboard.modifiersFor(kSymbolAlt);
        const auto modifiers = static_cast<std::uint16_t>(
            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT | (alt != 0 ? alt : kUsualAlt));
        const auto withNumLock =
            static_cast<std::uint16_t>(modifiers | keyboard.modifiersFor(kSymbolNumLock));
        std::vector<xcb_keycode_t> keys = keyboard.keysFor(kSymbolP);
        if (keys.empty())
            keys.push_back(kUsualKeyForP);
        for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(&connection_)); screen.rem != 0;
             xcb_screen_next(&screen)) {
            for (const xcb_keycode_t key : keys) {
                grabs_.push_back({screen.data->root, key, modifiers});
                if (withNumLock != modifiers)
                    grabs_.push_back({screen.data->root, key, withNumLock});
            }
        }
        const bool isRefused = !std::ranges::all_of(grabs_, [this](const Grab& grab) {
            const auto request =
                xcb_grab_key_checked(&connection_, 0, grab.root, grab.modifiers, grab.key,
                                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
            return XcbPointer<xcb_generic_error_t>(xcb_request_check(&connection_, request)) ==
                   nullptr;
        });
        if (isRefused) {
            if (!std::exchange(hasToldOfRefusal_, true))
                qCInfo(shortcutLog) << "Another program holds the global shortcut.";
            regrabTimer_.start(kPauseBeforeRetry);
        }
    }

    void release() {
        for (const Grab& grab : std::exchange(grabs_, {}))
            xcb_ungrab_key(&connection_, grab.key, grab.root, grab.modifiers);
        xcb_flush(&connection_);
    }

    xcb_connection_t& connection_;
    std::uint8_t xkbEvent_;
    GlobalShortcut::Handler handler_;
    std::vector<Grab> grabs_;
    xcb_timestamp_t lastRelease_{0};
    bool hasToldOfRefusal_{false};
    QTimer regrabTimer_;
    QObject context_; // ends the calls that are still to come
};

} // namespace

std::unique_ptr<GlobalShortcut::Monitor> X11GlobalShortcut::install(Handler handler) {
    return std::make_unique<GrabbedKey>(connection_, std::move(handler));
}

} // namespace zenlot
