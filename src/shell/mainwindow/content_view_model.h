// The state of the main window and what can be done with it: a port field with its check, the
// processes it found, the list of every listening port, and the force quit of a process. The
// window draws this and forwards keys and clicks.
//
// Everything here belongs to the main thread; questions to the inventory are answered elsewhere
// and come back as events.
#pragma once

#include "inventory/origin/port_stopper.h"
#include "inventory/port_process.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "platform/user_defaults.h"
#include "settings/app_settings.h"
#include "shell/mainwindow/application_cache.h"
#include "shell/mainwindow/bundle_key_cache.h"
#include "shell/mainwindow/process_list_model.h"
#include "shell/mainwindow/sidebar_model.h"
#include "shell/model/app_model.h"
#include "workers/worker_threads.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <chrono>
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

    // At most five digits; whatever else is assigned is dropped. What the window assigns was typed.
    Q_PROPERTY(QString portInput READ portInput WRITE setPortInput NOTIFY portInputChanged)
    // A port number, or -1 while none is selected.
    Q_PROPERTY(int sidebarSelection READ sidebarSelection WRITE setSidebarSelection NOTIFY
                   sidebarSelectionChanged)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY statusChanged)
    Q_PROPERTY(bool isFree READ isFree NOTIFY statusChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)
    // These two stay when they are no longer true, for what fades out with them.
    Q_PROPERTY(QString freeText READ freeText NOTIFY statusChanged)
    // What stands against a server there all the same; empty mostly.
    Q_PROPERTY(QString freeNote READ freeNote NOTIFY freeNoteChanged)
    Q_PROPERTY(QString resultsHeader READ resultsHeader NOTIFY statusChanged)
    Q_PROPERTY(bool hasResults READ hasResults NOTIFY statusChanged)
    Q_PROPERTY(bool isLoadingSidebar READ isLoadingSidebar NOTIFY isLoadingSidebarChanged)
    // The row of the highlighted process, or -1.
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectionChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    // Whether the highlighted process may be ended, and else why not and what would help.
    Q_PROPERTY(bool canForceQuit READ canForceQuit NOTIFY selectionChanged)
    Q_PROPERTY(QString forceQuitHint READ forceQuitHint NOTIFY selectionChanged)
    Q_PROPERTY(bool isInspectorOpen READ isInspectorOpen NOTIFY detailProcessChanged)
    Q_PROPERTY(bool canToggleInspector READ canToggleInspector NOTIFY selectionChanged)
    Q_PROPERTY(bool isConfirming READ isConfirming NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationButton READ confirmationButton NOTIFY confirmationChanged)
    // Stopping the server of the highlighted process: a question, which has no answer but to close
    // it where nothing can be done or only the result is told.
    Q_PROPERTY(bool canStop READ canStop NOTIFY selectionChanged)
    Q_PROPERTY(bool isAskingToStop READ isAskingToStop NOTIFY stopQuestionChanged)
    Q_PROPERTY(QString stopMessage READ stopMessage NOTIFY stopQuestionChanged)
    Q_PROPERTY(QString stopButton READ stopButton NOTIFY stopQuestionChanged)
    Q_PROPERTY(zenlot::ProcessListModel* processes READ processes CONSTANT)
    Q_PROPERTY(zenlot::SidebarModel* sidebar READ sidebar CONSTANT)
    // What is wrong with the file of the settings; empty mostly.
    Q_PROPERTY(QString settingsNotice READ settingsNotice NOTIFY settingsNoticeChanged)

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
        ApplicationCache& applications;
        BundleKeyCache& bundleKeys;
        AppModel& appModel;
        AppSettings& settings;
        UserDefaults& userDefaults;
        const PortStopper* stopper{nullptr}; // without one, nothing can be stopped
    };

    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    static constexpr int kNoSelection = -1;
    // Who has looked at an answer for so long types a new number.
    static constexpr std::chrono::seconds kLookAtTheAnswer{2};

    ContentViewModel(const Collaborators& collaborators, Actions actions, QObject* parent = nullptr,
                     Clock clock = std::chrono::steady_clock::now);
    ~ContentViewModel() override;

    QString settingsNotice() const { return with_.settings.notice(); }
    Q_INVOKABLE void dismissSettingsNotice() { with_.settings.dismissNotice(); }

    QString portInput() const { return portInput_; }
    void setPortInput(const QString& text);

    int sidebarSelection() const { return sidebarSelection_.value_or(kNoSelection); }
    void setSidebarSelection(int port);

    // Whether the next digit is the first of a new number, rather than one more of that in the
    // field: when that came from elsewhere, or its answer has been looked at.
    Q_INVOKABLE bool beginsNewNumber() const;
    // A digit that was typed anywhere but in the field.
    Q_INVOKABLE void typeDigit(const QString& digit);
    // The user has gone into the number in the field.
    Q_INVOKABLE void goIntoNumber() { number_ = Number::edited; }

    bool isChecking() const { return isChecking_; }
    bool isLoadingSidebar() const { return isLoadingSidebar_; }
    bool hasResults() const { return !processes_.isEmpty(); }
    // The line below the port field says that nobody holds the port that was checked.
    bool isFree() const { return !isChecking_ && checkedPort_ && processes_.isEmpty(); }
    QString statusText() const;
    QString freeText() const { return freeText_; }
    QString freeNote() const { return freeNote_; }
    QString resultsHeader() const { return resultsHeader_; }

    int selectedRow() const;
    bool hasSelection() const { return selectedProcess_.has_value(); }
    bool canForceQuit() const {
        return selectedProcess_ && selectedProcess_->obstacle == ForceQuitObstacle::none;
    }
    QString forceQuitHint() const;
    const std::optional<PortProcess>& selectedProcess() const { return selectedProcess_; }
    const std::optional<PortProcess>& detailProcess() const { return detailProcess_; }
    bool isInspectorOpen() const { return detailProcess_.has_value(); }
    bool canToggleInspector() const { return selectedProcess_ || detailProcess_; }

    bool isConfirming() const { return processToKill_.has_value(); }
    // Both stay when the question is answered, since it fades out.
    QString confirmationMessage() const { return confirmationMessage_; }
    QString confirmationButton() const { return confirmationButton_; }

    bool canStop() const { return with_.stopper && selectedProcess_ && !isStopping_; }
    bool isAskingToStop() const { return stopQuestion_.has_value(); }
    // Both stay when the question is answered, since it fades out.
    QString stopMessage() const { return stopMessage_; }
    QString stopButton() const { return stopButton_; }

    ProcessListModel* processes() { return &processes_; }
    SidebarModel* sidebar() { return &sidebar_; }

    // To be called each time the window's content appears.
    Q_INVOKABLE void appear();

    // Checks the port that another program has left in the preferences, once.
    void takePortToCheck();

    // Gives the port field the keyboard.
    void focusPortField() { Q_EMIT portFieldFocusRequested(); }

    Q_INVOKABLE void openSettings() const;

    // Asks about the port in the field at once. Does nothing when the field holds no port number.
    Q_INVOKABLE void performCheck();

    // Looks everything up again. What is the same stays on the screen as it is.
    Q_INVOKABLE void refresh();

    // Scans all ports and updates the sidebar.
    Q_INVOKABLE void loadOccupiedPorts();

    // Highlights the row and shows its process in the inspector.
    Q_INVOKABLE void openRow(int row);

    // Highlights the row that is so many rows further on, or the last one on the way.
    Q_INVOKABLE void moveSelection(int delta);

    Q_INVOKABLE void toggleInspector();
    Q_INVOKABLE void closeInspector();

    // Asks whether the highlighted process shall be force-quit, if it may be; then one of the
    // answers is due. If it may not, that is told.
    Q_INVOKABLE void requestForceQuit();
    // The same for a row by its key. Nothing happens when there is no such row any more.
    Q_INVOKABLE void openProcess(const QString& rowKey) { openRow(processes_.rowOf(rowKey)); }
    Q_INVOKABLE void requestForceQuitOf(const QString& rowKey);
    Q_INVOKABLE void confirmForceQuit();
    Q_INVOKABLE void cancelForceQuit();

    // Finds out what would have to end for the highlighted process, and asks; see stop_plan.h.
    Q_INVOKABLE void requestStop();
    Q_INVOKABLE void confirmStop();
    Q_INVOKABLE void cancelStop() { closeStopQuestion(); }

    // Selects the port of a row of the sidebar, or opens or closes its group.
    Q_INVOKABLE void activateSidebarRow(int row);
    // Asks about the port of a row of the sidebar, and when the answer has come, shows the details
    // of the row's process, or asks whether it shall be force-quit.
    Q_INVOKABLE void openPort(const QString& rowKey) { lookCloser(rowKey, Wish::details); }
    Q_INVOKABLE void requestForceQuitOfPort(const QString& rowKey) {
        lookCloser(rowKey, Wish::forceQuit);
    }

    Q_INVOKABLE void copyText(const QString& text) const;
    Q_INVOKABLE void copySelectedPid() const;
    Q_INVOKABLE void copySidebarPort(int row) const;

  Q_SIGNALS:
    void settingsNoticeChanged();
    void portInputChanged();
    void sidebarSelectionChanged();
    void statusChanged();
    void freeNoteChanged();
    void isLoadingSidebarChanged();
    void selectionChanged();
    void detailProcessChanged();
    void confirmationChanged();
    void stopQuestionChanged();
    // The highlighted process can't be ended; `forceQuitHint` says why.
    void forceQuitRefused();
    void portFieldFocusRequested();
    // A check has found processes: the list of results takes the keyboard.
    void resultsFocusRequested();

  private:
    enum class Number {
        typed,
        edited, // by somebody who went back into it
        done,   // the next digit begins another one
    };

    // That about the number in the field. Its first answer is shown as one: with the keyboard, and
    // the first row selected. Those that follow only correct the rows.
    enum class Wish { none, details, forceQuit };
    struct Question {
        int port;
        bool isAnswered{false};
        Wish wish{Wish::none}; // what is to follow on the answer
        ProcessId pid{0};      // for whom
    };

    enum class StopStep { ask, force };
    struct StopQuestion {
        StopPlan plan; // of the kind "none" where there is nothing to agree to
        StopStep step;
    };

    std::optional<int> portInField() const;
    void ask(int port);
    void askOrCheckAgain();
    void checkAgain();
    void fillIn(qint64 port);
    void changePortInput(const QString& text);
    void showAnswer(int port, std::vector<ProcessListRow> rows);
    void updateStatus();
    void lookCloser(const QString& sidebarRowKey, Wish wish);
    void fulfilWish();
    void checkPort(qint64 port);
    void takePendingPort();
    void scheduleDebouncedCheck();
    void assignSidebarSelection(std::optional<int> port);
    void assignIsLoadingSidebar(bool isLoading);
    void select(std::optional<PortProcess> process);
    void showDetails(std::optional<PortProcess> process);
    void assignProcessToKill(std::optional<PortProcess> process);
    QCoro::Task<> check(int port);
    QCoro::Task<> loadSidebar();
    QCoro::Task<> loadOrigins();
    QCoro::Task<> loadObstacles(int port);
    void setFreeNote(const QString& note);
    QCoro::Task<> forceQuit(PortProcess process);
    QCoro::Task<> planStop(PortProcess process);
    QCoro::Task<> carryOut(StopPlan plan, StopStep step);
    void askToStop(StopPlan plan, StopStep step, const QString& message, const QString& button);
    void closeStopQuestion();
    void setIsStopping(bool isStopping);

    Collaborators with_;
    Actions actions_;
    Clock clock_;
    QString portInput_;
    Number number_{Number::typed};
    std::chrono::steady_clock::time_point lastTyped_;
    std::optional<Question>
        question_;                   // none as long as the number in the field was not asked about
    std::optional<int> checkedPort_; // whose holders the rows are
    QString freeText_;
    QString freeNote_;
    QString resultsHeader_;
    QString confirmationMessage_;
    QString confirmationButton_;
    std::optional<int> sidebarSelection_;
    std::optional<PortProcess> selectedProcess_;
    std::optional<PortProcess> detailProcess_;
    std::optional<PortProcess> processToKill_;
    std::optional<StopQuestion> stopQuestion_;
    QString stopMessage_;
    QString stopButton_;
    bool isStopping_{false};
    ProcessListModel processes_;
    SidebarModel sidebar_;
    QTimer debounce_;
    QTimer nextSecond_; // of an obstacle that goes by itself
    bool isChecking_{false};
    bool isLoadingSidebar_{false};
    bool hasSearched_{false};
    // Answers to older questions are dropped.
    quint64 newestCheck_{0};
    quint64 newestSidebarLoad_{0};
    quint64 shownSidebarLoad_{0};
    bool isLoadingOrigins_{false};
    bool areOriginsOutdated_{false};
    // The last members, so that they end before what their work uses. What is stopped may wait for
    // somebody's password.
    WorkerThreads stopWorker_{1};
    WorkerThreads workers_;
};

} // namespace zenlot
