#include "shell/mainwindow/content_view_model.h"

#include "shell/mainwindow/force_quit_hint.h"
#include "shell/mainwindow/obstacle_text.h"
#include "shell/mainwindow/port_grouping.h"
#include "shell/mainwindow/stop_text.h"
#include "text/display_line.h"
#include "text/numbers.h"

#include <QClipboard>
#include <QCoroFuture>
#include <QCoroTimer>
#include <QGuiApplication>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto kTypingPause = 350ms;
// A killed process needs a moment to let go of its port.
constexpr auto kPauseAfterForceQuit = 400ms;
constexpr int kMostDigits = 5;
const QString kPortToCheckKey = u"portToCheck"_s;

// g++ 12 destroys some temporaries of an awaited expression twice, so futures are named before they
// are awaited, here and wherever a coroutine waits.

SidebarContent makeContent(std::vector<OccupiedPort> ports, ApplicationCache& applications,
                           BundleKeyCache& bundleKeys) {
    applications.forgetOld();
    const auto system = std::stable_partition(
        ports.begin(), ports.end(), [](const OccupiedPort& port) { return port.isCurrentUser(); });
    return {groupPorts({ports.begin(), system}, bundleKeys, applications),
            groupPorts({system, ports.end()}, bundleKeys, applications)};
}

// Short enough to leave the rest of the question on the screen.
constexpr qsizetype kLongestNameInSentence = 64;

QString nameInSentence(const PortProcess& process) {
    return displayLine(process.displayName, kLongestNameInSentence);
}

// Whose origin is asked for, and what the row says already.
struct NamedOwner {
    PortOwner owner;
    QString displayName;
};

template <typename Record>
NamedOwner ownerOf(const Record& record) {
    return {{static_cast<std::uint16_t>(record.port), {record.pid, record.startTime}},
            QString::fromStdString(record.displayName)};
}

std::vector<NamedOwner> ownersOf(const SidebarContent& content) {
    std::vector<NamedOwner> owners;
    for (const std::vector<AppPortGroup>* part : {&content.own, &content.system}) {
        for (const AppPortGroup& group : *part) {
            for (const OccupiedPort& port : group.ports) {
                if (isValidPort(port.port))
                    owners.push_back(ownerOf(port));
            }
        }
    }
    return owners;
}

void addNote(OriginNotes& notes, const NamedOwner& owner, const Origin& origin) {
    const OriginNote note = originNote(origin, owner.displayName);
    if (note != OriginNote())
        notes.insert(noteKey(owner.owner.process.pid, owner.owner.port), note);
}

bool isSameRow(const std::optional<PortProcess>& one, const PortProcess& other) {
    return one && one->id == other.id;
}

} // namespace

ContentViewModel::ContentViewModel(const Collaborators& collaborators, Actions actions,
                                   QObject* parent, Clock clock)
    : QObject(parent), with_(collaborators), actions_(std::move(actions)),
      clock_(std::move(clock)) {
    debounce_.setSingleShot(true);
    debounce_.setInterval(kTypingPause);
    connect(&debounce_, &QTimer::timeout, this, &ContentViewModel::askOrCheckAgain);
    nextSecond_.setSingleShot(true);
    nextSecond_.setInterval(1s);
    connect(&nextSecond_, &QTimer::timeout, this, [this] {
        if (isFree())
            loadObstacles(*checkedPort_);
    });
    connect(this, &ContentViewModel::detailProcessChanged, this,
            &ContentViewModel::selectionChanged);
    connect(&sidebar_, &SidebarModel::settled, this, [this] {
        if (shownSidebarLoad_ == newestSidebarLoad_)
            assignIsLoadingSidebar(false);
        loadOrigins();
    });
    connect(&with_.appModel, &AppModel::pendingPortChanged, this,
            &ContentViewModel::takePendingPort);
    connect(&with_.notifications, &NotificationCenter::portsUpdated, this,
            &ContentViewModel::loadOccupiedPorts);
    connect(&with_.settings, &AppSettings::noticeChanged, this,
            &ContentViewModel::settingsNoticeChanged);
}

ContentViewModel::~ContentViewModel() = default;

void ContentViewModel::appear() {
    loadOccupiedPorts();
    takePortToCheck();
    takePendingPort();
    if (!with_.settings.hasCompletedOnboarding() && actions_.showOnboardingWindow)
        actions_.showOnboardingWindow();
}

void ContentViewModel::takePortToCheck() {
    const std::optional<qint64> port = with_.userDefaults.integer(kPortToCheckKey);
    if (!port)
        return;
    with_.userDefaults.remove(kPortToCheckKey);
    checkPort(*port);
}

void ContentViewModel::takePendingPort() {
    const std::optional<qint64> port = with_.appModel.pendingPort();
    if (!port)
        return;
    fillIn(*port);
    with_.appModel.setPendingPort(std::nullopt);
    performCheck();
}

void ContentViewModel::openSettings() const {
    if (actions_.openSettings)
        actions_.openSettings();
}

void ContentViewModel::checkPort(qint64 port) {
    fillIn(port);
    performCheck();
}

// ---- The number in the field ----

void ContentViewModel::fillIn(qint64 port) {
    changePortInput(QString::number(port));
    number_ = Number::done;
}

void ContentViewModel::setPortInput(const QString& text) {
    changePortInput(text);
    number_ = Number::typed;
    lastTyped_ = clock_();
}

void ContentViewModel::changePortInput(const QString& text) {
    if (text == portInput_)
        return;
    const QString before = std::exchange(portInput_, numericCharacters(text, kMostDigits));
    // Also when the text is what it was: the field may show a character that was refused.
    Q_EMIT portInputChanged();
    if (portInput_ == before)
        return;
    question_.reset();
    select(std::nullopt);
    showDetails(std::nullopt);
    scheduleDebouncedCheck();
    // Last, since it may write the number in another way and ask about it at once.
    assignSidebarSelection(decimalNumber(portInput_));
    updateStatus();
}

bool ContentViewModel::beginsNewNumber() const {
    const bool isAnswered = question_ && question_->isAnswered;
    return number_ == Number::done ||
           (number_ == Number::typed && isAnswered && clock_() - lastTyped_ >= kLookAtTheAnswer);
}

void ContentViewModel::typeDigit(const QString& digit) {
    setPortInput(beginsNewNumber() ? digit : portInput_ + digit);
}

void ContentViewModel::setSidebarSelection(int port) {
    assignSidebarSelection(port == kNoSelection ? std::nullopt : std::optional(port));
}

void ContentViewModel::assignSidebarSelection(std::optional<int> port) {
    if (port == sidebarSelection_)
        return;
    sidebarSelection_ = port;
    Q_EMIT sidebarSelectionChanged();
    if (port && QString::number(*port) != portInput_)
        checkPort(*port);
}

QString ContentViewModel::statusText() const {
    if (isChecking_)
        return {};
    if (!hasSearched_)
        return tr("Enter a port number");
    return isFree() ? freeText_ : QString();
}

void ContentViewModel::updateStatus() {
    if (checkedPort_) {
        const QString port = QString::number(*checkedPort_);
        const int count = processes_.rowCount();
        if (count == 0)
            freeText_ = tr("Port %1 is free").arg(port);
        else
            resultsHeader_ =
                (count == 1 ? tr("%1 process on port %2") : tr("%1 processes on port %2"))
                    .arg(QString::number(count), port);
    }
    Q_EMIT statusChanged();
}

int ContentViewModel::selectedRow() const {
    return selectedProcess_ ? processes_.rowOfProcess(*selectedProcess_) : kNoSelection;
}

void ContentViewModel::scheduleDebouncedCheck() {
    debounce_.stop();
    if (!portInput_.isEmpty()) {
        debounce_.start();
        return;
    }
    // What is still being looked up belongs to a number that is no longer there.
    ++newestCheck_;
    isChecking_ = false;
    hasSearched_ = false;
    checkedPort_.reset();
    processes_.setProcesses({});
}

// ---- Checks ----

std::optional<int> ContentViewModel::portInField() const {
    const std::optional<int> port = decimalNumber(portInput_);
    return port && isValidPort(*port) ? port : std::nullopt;
}

void ContentViewModel::performCheck() {
    if (const std::optional<int> port = portInField())
        ask(*port);
}

void ContentViewModel::askOrCheckAgain() {
    if (question_)
        check(question_->port);
    else
        performCheck();
}

// Of a number that is still being typed the next check is on its way.
void ContentViewModel::checkAgain() {
    if (question_)
        check(question_->port);
    else if (checkedPort_ && !debounce_.isActive())
        check(*checkedPort_);
}

void ContentViewModel::refresh() {
    loadSidebar();
    checkAgain();
}

void ContentViewModel::ask(int port) {
    question_ = Question{port};
    isChecking_ = true;
    hasSearched_ = true;
    select(std::nullopt);
    showDetails(std::nullopt);
    updateStatus();
    check(port);
}

QCoro::Task<> ContentViewModel::check(int port) {
    const quint64 number = ++newestCheck_;
    const QPointer<ContentViewModel> self(this);
    const QFuture<std::vector<PortProcess>> lookup = with_.inventory.processesOnPort(port);
    std::vector<PortProcess> found = co_await lookup;
    if (!self || number != newestCheck_)
        co_return;
    const QFuture<std::vector<ProcessListRow>> making = workers_.run(
        [found = std::move(found)]() mutable { return processListRows(std::move(found)); });
    std::vector<ProcessListRow> rows = co_await making;
    if (self && number == newestCheck_)
        showAnswer(port, std::move(rows));
}

void ContentViewModel::showAnswer(int port, std::vector<ProcessListRow> rows) {
    isChecking_ = false;
    if (port != checkedPort_)
        setFreeNote({});
    checkedPort_ = port;
    processes_.setProcesses(std::move(rows));
    const bool isFirst = question_ && question_->port == port && !question_->isAnswered;
    if (isFirst) {
        question_->isAnswered = true;
        select(processes_.processAt(0));
    } else if (selectedProcess_) {
        select(processes_.processAt(selectedRow()));
    }
    Q_EMIT selectionChanged(); // its row may be another one
    updateStatus();
    if (isFirst && !processes_.isEmpty()) {
        Q_EMIT resultsFocusRequested();
        fulfilWish();
    }
    if (processes_.isEmpty())
        loadObstacles(port);
    else
        loadOrigins();
    // Two answers to one question can't stand side by side.
    if (processes_.isEmpty() == sidebar_.holds(port) && !isLoadingSidebar_)
        loadSidebar();
}

QCoro::Task<> ContentViewModel::loadObstacles(int port) {
    const quint64 number = newestCheck_;
    const QPointer<ContentViewModel> self(this);
    const QFuture<std::vector<BindObstacle>> look =
        with_.inventory.obstaclesOnPort(static_cast<std::uint16_t>(port));
    const std::vector<BindObstacle> obstacles = co_await look;
    if (!self || number != newestCheck_)
        co_return;
    setFreeNote(obstaclesText(obstacles));
    if (std::ranges::find(obstacles, BindObstacle::Kind::timeWait, &BindObstacle::kind) !=
        obstacles.end())
        nextSecond_.start();
}

void ContentViewModel::setFreeNote(const QString& note) {
    if (note == freeNote_)
        return;
    freeNote_ = note;
    Q_EMIT freeNoteChanged();
}

// ---- The sidebar ----

void ContentViewModel::loadOccupiedPorts() {
    loadSidebar();
}

QCoro::Task<> ContentViewModel::loadSidebar() {
    const quint64 number = ++newestSidebarLoad_;
    assignIsLoadingSidebar(true);
    const QPointer<ContentViewModel> self(this);
    const QFuture<std::vector<OccupiedPort>> scan = with_.inventory.listMergedPorts();
    std::vector<OccupiedPort> ports = co_await scan;
    if (!self || number != newestSidebarLoad_)
        co_return;
    const QFuture<SidebarContent> grouping =
        workers_.run([this, ports = std::move(ports)]() mutable {
            return makeContent(std::move(ports), with_.applications, with_.bundleKeys);
        });
    SidebarContent content = co_await grouping;
    if (!self || number != newestSidebarLoad_)
        co_return;
    shownSidebarLoad_ = number;
    sidebar_.setContent(std::move(content));
}

// The rows don't wait for what is said beside their names.
QCoro::Task<> ContentViewModel::loadOrigins() {
    areOriginsOutdated_ = true;
    if (isLoadingOrigins_)
        co_return;
    isLoadingOrigins_ = true;
    const QPointer<ContentViewModel> self(this);
    while (areOriginsOutdated_) {
        areOriginsOutdated_ = false;
        std::vector<NamedOwner> owners = ownersOf(sidebar_.content());
        for (const ProcessListRow& row : processes_.rows())
            owners.push_back(ownerOf(row.process));
        std::vector<PortOwner> rows;
        rows.reserve(owners.size());
        for (const NamedOwner& owner : owners)
            rows.push_back(owner.owner);
        const QFuture<OriginNotes> reading = with_.inventory.readOrigins<OriginNotes>(
            std::move(rows), [owners = std::move(owners)](OriginNotes& notes, std::size_t row,
                                                          const Origin& origin) {
                addNote(notes, owners[row], origin);
            });
        OriginNotes notes = co_await reading;
        if (!self)
            co_return;
        sidebar_.setNotes(notes);
        processes_.setNotes(std::move(notes));
    }
    isLoadingOrigins_ = false;
}

void ContentViewModel::assignIsLoadingSidebar(bool isLoading) {
    if (isLoading == isLoadingSidebar_)
        return;
    isLoadingSidebar_ = isLoading;
    Q_EMIT isLoadingSidebarChanged();
}

void ContentViewModel::openRow(int row) {
    std::optional<PortProcess> process = processes_.processAt(row);
    if (!process)
        return;
    select(process);
    showDetails(std::move(process));
}

void ContentViewModel::moveSelection(int delta) {
    if (!processes_.isEmpty())
        select(
            processes_.processAt(std::clamp(selectedRow() + delta, 0, processes_.rowCount() - 1)));
}

void ContentViewModel::toggleInspector() {
    if (detailProcess_)
        closeInspector();
    else if (selectedProcess_)
        showDetails(selectedProcess_);
}

void ContentViewModel::closeInspector() {
    showDetails(std::nullopt);
}

void ContentViewModel::select(std::optional<PortProcess> process) {
    if (process == selectedProcess_)
        return;
    selectedProcess_ = std::move(process);
    Q_EMIT selectionChanged();
}

void ContentViewModel::showDetails(std::optional<PortProcess> process) {
    if (process == detailProcess_)
        return;
    detailProcess_ = std::move(process);
    Q_EMIT detailProcessChanged();
}

QString ContentViewModel::forceQuitHint() const {
    return selectedProcess_ ? zenlot::forceQuitHint(*selectedProcess_) : QString();
}

void ContentViewModel::requestForceQuit() {
    if (canForceQuit())
        assignProcessToKill(selectedProcess_);
    else if (selectedProcess_)
        Q_EMIT forceQuitRefused();
}

void ContentViewModel::requestForceQuitOf(const QString& rowKey) {
    if (const int row = processes_.rowOf(rowKey); row >= 0) {
        select(processes_.processAt(row));
        requestForceQuit();
    }
}

void ContentViewModel::confirmForceQuit() {
    const std::optional<PortProcess> process = processToKill_;
    assignProcessToKill(std::nullopt);
    if (!process)
        return;
    if (process->port == portInField())
        number_ = Number::done; // the next digit may come before the end of the process
    forceQuit(*process);
}

void ContentViewModel::cancelForceQuit() {
    assignProcessToKill(std::nullopt);
}

void ContentViewModel::assignProcessToKill(std::optional<PortProcess> process) {
    if (process == processToKill_)
        return;
    processToKill_ = std::move(process);
    if (processToKill_) {
        const QString name = nameInSentence(*processToKill_);
        confirmationMessage_ = tr("Force-quit %1 (PID %2)? Any unsaved work will be lost.")
                                   .arg(name, QString::number(processToKill_->pid));
        confirmationButton_ = tr("Force Quit %1").arg(name);
    }
    Q_EMIT confirmationChanged();
}

QCoro::Task<> ContentViewModel::forceQuit(PortProcess process) {
    const QPointer<ContentViewModel> self(this);
    const QFuture<bool> kill = with_.inventory.forceQuitProcess(process.target());
    const bool wasKilled = co_await kill;
    if (!self || !wasKilled)
        co_return;
    processes_.removeProcessesWithPid(process.pid);
    if (isSameRow(selectedProcess_, process))
        select(std::nullopt);
    Q_EMIT selectionChanged();
    updateStatus();
    const QCoro::Task<> loading = loadSidebar();
    co_await loading;
    if (!self)
        co_return;
    QTimer pause;
    pause.setSingleShot(true);
    pause.start(kPauseAfterForceQuit);
    co_await pause;
    if (!self)
        co_return;
    checkAgain();
    // A process that was still ending a moment ago held its port in the first look.
    loadSidebar();
}

// ---- Stop ----

void ContentViewModel::requestStop() {
    if (canStop())
        planStop(*selectedProcess_);
}

QCoro::Task<> ContentViewModel::planStop(PortProcess process) {
    setIsStopping(true);
    const QPointer<ContentViewModel> self(this);
    const auto pid = process.pid == 0 ? std::nullopt : std::optional(process.pid);
    const QFuture<StopPlan> planning =
        stopWorker_.run([stopper = with_.stopper, port = process.port, pid] {
            return stopper->plan(static_cast<std::uint16_t>(port), pid);
        });
    const StopPlan plan = co_await planning;
    if (!self)
        co_return;
    setIsStopping(false);
    askToStop(plan, StopStep::ask, stopPlanText(plan),
              plan.kind == StopPlan::Kind::none
                  ? QString()
                  : tr("Stop %1").arg(displayLine(plan.name, kLongestNameInSentence)));
}

void ContentViewModel::confirmStop() {
    const std::optional<StopQuestion> question = stopQuestion_;
    closeStopQuestion();
    if (question && question->plan.kind != StopPlan::Kind::none)
        carryOut(question->plan, question->step);
}

QCoro::Task<> ContentViewModel::carryOut(StopPlan plan, StopStep step) {
    setIsStopping(true);
    const QPointer<ContentViewModel> self(this);
    const QFuture<StopResult> stopping = stopWorker_.run([stopper = with_.stopper, plan, step] {
        return step == StopStep::ask ? stopper->stop(plan) : stopper->force(plan);
    });
    const StopResult result = co_await stopping;
    if (!self)
        co_return;
    setIsStopping(false);
    refresh();
    const bool canForce =
        result.outcome == StopResult::Outcome::stillHeld && plan.kind == StopPlan::Kind::processes;
    const QString message = stopResultText(plan, result);
    if (!canForce)
        plan.kind = StopPlan::Kind::none;
    if (!message.isEmpty())
        askToStop(std::move(plan), StopStep::force, message,
                  canForce ? tr("End by Force") : QString());
}

void ContentViewModel::askToStop(StopPlan plan, StopStep step, const QString& message,
                                 const QString& button) {
    stopQuestion_ = StopQuestion{std::move(plan), step};
    stopMessage_ = message;
    stopButton_ = button;
    Q_EMIT stopQuestionChanged();
}

void ContentViewModel::closeStopQuestion() {
    if (!stopQuestion_)
        return;
    stopQuestion_.reset();
    Q_EMIT stopQuestionChanged();
}

void ContentViewModel::setIsStopping(bool isStopping) {
    isStopping_ = isStopping;
    Q_EMIT selectionChanged();
}

void ContentViewModel::activateSidebarRow(int row) {
    const int port = sidebar_.portAt(row);
    if (port < 0)
        sidebar_.toggle(row);
    else if (port != sidebarSelection_)
        setSidebarSelection(port);
    else
        askOrCheckAgain();
}

void ContentViewModel::lookCloser(const QString& sidebarRowKey, Wish wish) {
    const int row = sidebar_.rowOf(sidebarRowKey);
    const int port = sidebar_.portAt(row);
    if (port < 0)
        return;
    setSidebarSelection(port);
    if (!question_)
        performCheck();
    if (!question_)
        return;
    question_->wish = wish;
    question_->pid = sidebar_.index(row).data(SidebarModel::pidRole).toInt();
    if (question_->isAnswered)
        fulfilWish();
}

// Of another process than the one that was meant nothing is done.
void ContentViewModel::fulfilWish() {
    const Wish wish = std::exchange(question_->wish, Wish::none);
    const auto row =
        std::ranges::find(processes_.rows(), question_->pid,
                          [](const ProcessListRow& each) { return processIdOf(each.process.pid); });
    if (wish == Wish::none || row == processes_.rows().end())
        return;
    if (wish == Wish::details)
        openProcess(row->key);
    else
        requestForceQuitOf(row->key);
}

void ContentViewModel::copySelectedPid() const {
    if (selectedProcess_)
        copyText(QString::number(selectedProcess_->pid));
}

void ContentViewModel::copySidebarPort(int row) const {
    if (const int port = sidebar_.portAt(row); port >= 0)
        copyText(QString::number(port));
}

void ContentViewModel::copyText(const QString& text) const {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace zenlot
