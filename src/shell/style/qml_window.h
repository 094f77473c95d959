// A window made of QML that exists while it is shown: opening it again after it was closed makes a
// new one.
//
//     QmlWindow window([&]() -> QQmlEngine& { return engine; }, "Updater/UpdateWindow.qml",
//                      QmlWindow::showing(viewModel));
//     window.open();
//
// Main thread only. It must be gone before the engine.
#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <functional>
#include <memory>

QT_FORWARD_DECLARE_CLASS(QQmlComponent)
QT_FORWARD_DECLARE_CLASS(QQmlEngine)
QT_FORWARD_DECLARE_CLASS(QQuickWindow)

namespace zenlot {

class QmlWindow final : public QObject {
    Q_OBJECT

  public:
    using Engine = std::function<QQmlEngine&()>;

    // What the next window shows. Objects that it alone needs are put below `owner`, which lives
    // somewhat longer than the window.
    using Properties = std::function<QVariantMap(QObject& owner)>;

    // What shows one view model and nothing else. It must outlive the window.
    template <typename ViewModel>
    static Properties showing(ViewModel& viewModel) {
        return [&viewModel](QObject&) -> QVariantMap {
            return {{QStringLiteral("viewModel"), QVariant::fromValue(&viewModel)}};
        };
    }

    // The file is one of the program's modules, below Zenlot.
    QmlWindow(Engine engine, const char* file, Properties properties);
    ~QmlWindow() override;

    // Makes the window if there is none. It is not shown yet. Null when it can't be made; what is
    // wrong is in the log.
    QQuickWindow* open();

    // The same from the event loop, which turns while the files are read, and calls with the window
    // when it is there.
    using Opened = std::function<void(QQuickWindow&)>;
    void openSoon(Opened opened);

    // Null while there is none.
    QQuickWindow* window() const { return window_.get(); }

  Q_SIGNALS:
    void closed();

  private:
    void finishOpening();
    QQuickWindow* make(QQmlComponent& component);
    void release();

    Engine engine_;
    QUrl source_;
    Properties properties_;
    std::unique_ptr<QQmlComponent> component_; // of what was opened soon
    Opened opened_;                            // of the latest who waits
    std::unique_ptr<QObject> owner_;
    std::unique_ptr<QQuickWindow> window_; // goes before its owner
};

} // namespace zenlot
