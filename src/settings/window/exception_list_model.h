// One of the user's lists of exempt ports or processes, for its editor: the entries as they are
// stored, whoever stored them.
//
// What is typed is checked, made plain and added in order; what can't be an entry, or is one
// already, is dropped without a word.
#pragma once

#include "settings/app_settings.h"

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zenlot {

class ExceptionListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    enum Role : int { EntryRole = Qt::UserRole, IsNumericRole };

    // A list in the settings, which must outlive the model.
    using PortsGetter = QList<qint64> (AppSettings::*)() const;
    using PortsSetter = void (AppSettings::*)(const QList<qint64>&);
    using NamesGetter = QStringList (AppSettings::*)() const;
    using NamesSetter = void (AppSettings::*)(const QStringList&);
    using Changed = void (AppSettings::*)();
    ExceptionListModel(AppSettings& settings, PortsGetter get, PortsSetter set, Changed changed,
                       QObject* parent = nullptr);
    ExceptionListModel(AppSettings& settings, NamesGetter get, NamesSetter set, Changed changed,
                       QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Takes up what was typed, if it can be an entry and is none yet.
    Q_INVOKABLE void commit(const QString& draft);

    // Removes every entry that is equal to the one in that row.
    Q_INVOKABLE void removeEntry(int row);

  private:
    struct Editor {
        std::function<QStringList()> items;
        std::function<std::optional<QString>(const QString&)> validate;
        std::function<void(const QString&)> onAdd;
        std::function<void(const QString&)> onRemove;
    };

    ExceptionListModel(AppSettings& settings, Editor editor, Changed changed, QObject* parent);
    void refresh();

    Editor editor_;
    QStringList items_;
};

} // namespace zenlot
