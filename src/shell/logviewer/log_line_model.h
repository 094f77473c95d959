// The lines of the log and the marks that the user has set, for a list. Only rows that are shown
// are ever made into text. Lines that are appended are rows that are inserted, and the view keeps
// its place when others are exchanged.
//
// A mark belongs to a line at its place, which is what its identity says: when another line stands
// there, the mark goes. Marks live as long as the model.
#pragma once

#include "shell/logviewer/log_text.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <set>

namespace zenlot {

class LogLineModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    enum Role : int { LineTextRole = Qt::UserRole, TintRole, IsMarkedRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Never null.
    const std::shared_ptr<const LogText>& text() const { return text_; }

    // `equalLines` is text->countOfEqualLines(*text()), which takes too long for this thread.
    void setText(std::shared_ptr<const LogText> text, qint64 equalLines);

    void toggleMark(int row);
    void unmarkAll();
    bool hasMarks() const { return !marks_.empty(); }
    QStringList markedLineIDs() const;

  Q_SIGNALS:
    void marksChanged();

  private:
    std::shared_ptr<const LogText> text_{std::make_shared<LogText>()};
    int rowCount_{0};
    std::set<int> marks_; // rows
};

} // namespace zenlot
