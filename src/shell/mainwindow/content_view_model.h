// The state of the main window and what can be done with it: a port field with its check, and the
// list of every listening port beside it. The window draws this and forwards keys and clicks.
//
// Everything here belongs to the main thread; questions to the inventory are answered elsewhere
// and come back as events.
#pragma once

#include "inventory/port_process.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "shell/mainwindow/process_list_model.h"
#include "shell/mainwindow/sidebar_model.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
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
    Q_PROPERTY(zenlot::ProcessListModel* processes READ processes CONSTANT)
    Q_PROPERTY(zenlot::SidebarModel* sidebar READ sidebar CONSTANT)

  public:
    static constexpr int kNoSelection = -1;

    // The references must outlive the object.
    ContentViewModel(PortInventory& inventory, NotificationCenter& notifications,
                     QObject* parent = nullptr);

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
    ProcessListModel* processes() { return &processes_; }
    SidebarModel* sidebar() { return &sidebar_; }

    // To be called each time the window's content appears.
    Q_INVOKABLE void appear();

    // Looks the port in the field up at once. Does nothing when the field holds no port number.
    Q_INVOKABLE void performCheck();

    // Scans all ports and updates the sidebar.
    Q_INVOKABLE void loadOccupiedPorts();

  Q_SIGNALS:
    void portInputChanged();
    void sidebarSelectionChanged();
    void statusChanged();
    void isLoadingSidebarChanged();
    // A check has found processes: the list of results takes the keyboard.
    void resultsFocusRequested();

  private:
    void scheduleDebouncedCheck();
    void assignSidebarSelection(std::optional<int> port);
    void assignIsLoadingSidebar(bool isLoading);
    QCoro::Task<> check(int port);
    QCoro::Task<> loadSidebar();

    PortInventory& inventory_;
    QString portInput_;
    std::optional<int> sidebarSelection_;
    ProcessListModel processes_;
    SidebarModel sidebar_;
    QTimer debounce_;
    bool isChecking_{false};
    bool isLoadingSidebar_{false};
    bool hasSearched_{false};
    quint64 newestCheck_{0}; // the answer to an older one is dropped
};

} // namespace zenlot
