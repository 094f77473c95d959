// The user's preferences of this program: named values that outlive it.
//
// What is read may be whatever another program has put there. It is told apart as bool, qint64 (as
// far as that reaches; 3.0 is none), double, QString and QVariantList; anything else is an invalid
// QVariant, and a null counts as no value. What is stored is a bool, or a list of one kind.
//
// Each change is kept at once. Other programs may change the same preferences, so each reading asks
// anew. Nothing fails towards the caller: what can't be read is absent, what can't be kept is
// dropped, and the implementation logs why.
//
//     defaults.set(QStringLiteral("showInDock"), true);
//     bool shown = defaults.boolean(QStringLiteral("showInDock"));
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QtGlobal>

#include <optional>

namespace zenlot {

class UserDefaults {
  public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    virtual std::optional<QVariant> object(const QString& key) const = 0;

    void set(const QString& key, bool value) { store(key, value); }
    void set(const QString& key, const QList<qint64>& values);
    void set(const QString& key, const QStringList& values);

    virtual void remove(const QString& key) = 0;

    // True for the bool true, for numbers other than zero, and for strings that begin, after white
    // space, a sign and zeros, with Y, y, T, t or a digit from 1 to 9. Everything else is false.
    bool boolean(const QString& key) const;

    // The value when it is an integer of 64 bits; neither a bool nor 3.0 is one.
    std::optional<qint64> integer(const QString& key) const;

    // The list when each of its elements is an integer or, below, a string; otherwise nothing.
    std::optional<QList<qint64>> integers(const QString& key) const;
    std::optional<QStringList> strings(const QString& key) const;

  private:
    // `value` is of the kinds that object() gives.
    virtual void store(const QString& key, const QVariant& value) = 0;
};

} // namespace zenlot
