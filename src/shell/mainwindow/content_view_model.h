// The state of the main window and what can be done with it: a port field with its check, the
// processes it found, the list of every listening port, and the force quit of a process. The
// window draws this and forwards keys and clicks.
//
// Everything here belongs to the main thread; questions to the inventory are answered elsewhere
// and come back as events.
#pragma once

#include "inventory/port_process.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "platform/running_applications.h"
#include "platform/user_defaults.h"
#include "settings/app_settings.h"
#include "shell/mainwindow/bundle_key_cache.h"
#include "shell/mainwindow/process_list_model.h"
#include "shell/mainwindow/sidebar_model.h"
#include "shell/model/app_model.h"
#include "workers/worker_threads.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>

#ifndef Q_MOC_RUN // moc can't read the standard headers that it brings
#include <QCoroTask>
#endif

namespace zenlot {

class ContentViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    // At most five digits; whatever else is assigned is dropped.
    Q_PROPERTY(QString portInput READ portInput WRITE setPortInput NOTIFY portInputChanged)
    // A port number, or -1 while none is selected.
    Q_PROPERTY(int sidebarSelection READ sidebarSelection WRITE setSidebarSelection NOTIFY
                   sidebarSelectionChanged)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY statusChanged)
    Q_PROPERTY(bool isFree READ isFree NOTIFY statusChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)
    Q_PROPERTY(QString resultsHeader READ resultsHeader NOTIFY statusChanged)
    Q_PROPERTY(bool isLoadingSidebar READ isLoadingSidebar NOTIFY isLoadingSidebarChanged)
    // The row of the highlighted process, or -1.
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectionChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    // Whether the highlighted process may be ended.
    Q_PROPERTY(bool canForceQuit READ canForceQuit NOTIFY selectionChanged)
    Q_PROPERTY(bool isInspectorOpen READ isInspectorOpen NOTIFY detailProcessChanged)
    Q_PROPERTY(bool canToggleInspector READ canToggleInspector NOTIFY selectionChanged)
    Q_PROPERTY(bool isConfirming READ isConfirming NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationButton READ confirmationButton NOTIFY confirmationChanged)
    Q_PROPERTY(zenlot::ProcessListModel* processes READ processes CONSTANT)
    Q_PROPERTY(zenlot::SidebarModel* sidebar READ sidebar CONSTANT)

  public:
    // What the window asks of its neighbours. Absent ones are not asked.
    struct Actions {
        std::function<void()> openSettings;
        std::function<void()> showOnboardingWindow;
    };

    // The references must outlive the object.
    struct Collaborators {
        PortInventory& inventory;
        NotificationCenter& notifications;
        const RunningApplications& runningApplications;
        BundleKeyCache& bundleKeys;
        AppModel& appModel;
        const AppSettings& settings;
        UserDefaults& userDefaults;
    };

    static constexpr int kNoSelection = -1;

    ContentViewModel(const Collaborators& collaborators, Actions actions,
                     QObject* parent = nullptr);
    ~ContentViewModel() override;

    QString portInput() const { return portInput_; }
    void setPortInput(const QString& text);

    int sidebarSelection() const { return sidebarSelection_.value_or(kNoSelection); }
    void setSidebarSelection(int port);

    bool isChecking() const { return isChecking_; }
    bool isLoadingSidebar() const { return isLoadingSidebar_; }
    // The line below the port field says that nobody holds the port.
    bool isFree() const;
    QString statusText() const;
    QString resultsHeader() const;

    int selectedRow() const;
    bool hasSelection() const { return selectedProcess_.has_value(); }
    bool canForceQuit() const {
        return selectedProcess_ && selectedProcess_->obstacle == ForceQuitObstacle::none;
    }
    const std::optional<PortProcess>& selectedProcess() const { return selectedProcess_; }
    const std::optional<PortProcess>& detailProcess() const { return detailProcess_; }
    bool isInspectorOpen() const { return detailProcess_.has_value(); }
    bool canToggleInspector() const { return selectedProcess_ || detailProcess_; }

    bool isConfirming() const { return processToKill_.has_value(); }
    QString confirmationMessage() const;
    QString confirmationButton() const;

    ProcessListModel* processes() { return &processes_; }
    SidebarModel* sidebar() { return &sidebar_; }

    // To be called each time the window's content appears.
    Q_INVOKABLE void appear();

    // Gives the port field the keyboard.
    void focusPortField() { Q_EMIT portFieldFocusRequested(); }

    Q_INVOKABLE void openSettings() const;

    // Looks the port in the field up at once. Does nothing when the field holds no port number.
    Q_INVOKABLE void performCheck();

    // Scans all ports and updates the sidebar.
    Q_INVOKABLE void loadOccupiedPorts();

    // Highlights the row and shows its process in the inspector.
    Q_INVOKABLE void openRow(int row);

    // Highlights the row that is so many rows further on, or the last one on the way.
    Q_INVOKABLE void moveSelection(int delta);

    Q_INVOKABLE void toggleInspector();
    Q_INVOKABLE void closeInspector();

    // Asks whether the highlighted process shall be force-quit, if it may be; then one of the
    // answers is due.
    Q_INVOKABLE void requestForceQuit();
    Q_INVOKABLE void confirmForceQuit();
    Q_INVOKABLE void cancelForceQuit();

    // Selects the port of a row of the sidebar, or opens or closes its group.
    Q_INVOKABLE void activateSidebarRow(int row);

    Q_INVOKABLE void copyText(const QString& text) const;
    Q_INVOKABLE void copySelectedPid() const;
    Q_INVOKABLE void copySidebarPort(int row) const;

  Q_SIGNALS:
    void portInputChanged();
    void sidebarSelectionChanged();
    void statusChanged();
    void isLoadingSidebarChanged();
    void selectionChanged();
    void detailProcessChanged();
    void confirmationChanged();
    void portFieldFocusRequested();
    // A check has found processes: the list of results takes the keyboard.
    void resultsFocusRequested();

  private:
    void checkPort(qint64 port);
    void takePortToCheck();
    void takePendingPort();
    void scheduleDebouncedCheck();
    void assignSidebarSelection(std::optional<int> port);
    void assignIsLoadingSidebar(bool isLoading);
    void select(std::optional<PortProcess> process);
    void showDetails(std::optional<PortProcess> process);
    void assignProcessToKill(std::optional<PortProcess> process);
    QCoro::Task<> check(int port);
    QCoro::Task<> loadSidebar();
    QCoro::Task<> forceQuit(PortProcess process);

    Collaborators with_;
    Actions actions_;
    QString portInput_;
    std::optional<int> sidebarSelection_;
    std::optional<PortProcess> selectedProcess_;
    std::optional<PortProcess> detailProcess_;
    std::optional<PortProcess> processToKill_;
    ProcessListModel processes_;
    SidebarModel sidebar_;
    QTimer debounce_;
    bool isChecking_{false};
    bool isLoadingSidebar_{false};
    bool hasSearched_{false};
    // Answers to older questions are dropped.
    quint64 newestCheck_{0};
    quint64 newestSidebarLoad_{0};
    WorkerThreads workers_; // the last member, so that it ends before what its work uses
};

} // namespace zenlot
