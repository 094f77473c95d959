// The rows of a section of the inspector: a label and a value each. A new snapshot is a new set of
// rows, so they come and go together.
#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

struct DetailRow {
    QString label;
    QString value;

    friend bool operator==(const DetailRow&, const DetailRow&) = default;
};

class DetailRowModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    enum Role { labelRole = Qt::UserRole, valueRole };

    using QAbstractListModel::QAbstractListModel;

    const QList<DetailRow>& rows() const { return rows_; }
    void setRows(QList<DetailRow> rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    QList<DetailRow> rows_;
};

} // namespace zenlot
