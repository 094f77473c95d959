// Something that the user can have done, whatever shows it: the menu of the status item, the menu
// that a panel shows for us, a menu or a button of a window. There is one object for each command;
// all who show it read its text from here, follow `changed` and call run().
//
//     Command quit(tr("Quit Zenlot"), u"Ctrl+Q"_s, [] { QCoreApplication::quit(); });
//
// The text is plain; menus that give a meaning to some characters have to write it their way. Main
// thread only.
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace zenlot {

class Command final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)
    // In the form of QKeySequence; may be empty.
    Q_PROPERTY(QString keyEquivalent READ keyEquivalent CONSTANT)
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY changed)

  public:
    Command(const QString& text, const QString& keyEquivalent, std::function<void()> run,
            QObject* parent = nullptr);

    QString text() const { return text_; }
    QString keyEquivalent() const { return keyEquivalent_; }

    bool isEnabled() const { return isEnabled_; }
    void setEnabled(bool enabled);

    // Does nothing while the command is not enabled.
    Q_INVOKABLE void run();

  Q_SIGNALS:
    void changed();

  private:
    QString text_;
    QString keyEquivalent_;
    std::function<void()> run_;
    bool isEnabled_{true};
};

} // namespace zenlot
