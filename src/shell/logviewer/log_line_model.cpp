#include "shell/logviewer/log_line_model.h"

#include "shell/logviewer/log_line.h"
#include "text/display_line.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zenlot {
namespace {

// Longer ones are cut off in the list: laying out megabytes of text takes seconds.
constexpr qsizetype kLongestShownLine = 4000;

QString shownText(QByteArrayView line) {
    if (line.endsWith('\r'))
        line.chop(1);
    // A character takes at most four bytes; one that is cut in two is beyond what is shown.
    return displayLine(
        QString::fromUtf8(line.first(std::min(line.size(), 4 * (kLongestShownLine + 2)))),
        kLongestShownLine);
}

} // namespace

int LogLineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowCount_;
}

QVariant LogLineModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case LineTextRole:
        return shownText(text_->line(index.row()));
    case TintRole:
        return static_cast<int>(lineColor(text_->line(index.row())));
    case IsMarkedRole:
        return marks_.contains(index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> LogLineModel::roleNames() const {
    return {{LineTextRole, "lineText"}, {TintRole, "tint"}, {IsMarkedRole, "isMarked"}};
}

void LogLineModel::setText(std::shared_ptr<const LogText> text, qint64 equalLines) {
    const int kept = static_cast<int>(std::min<qint64>(equalLines, rowCount_));
    const int wanted =
        static_cast<int>(std::min<qint64>(text->lineCount(), std::numeric_limits<int>::max()));
    const bool losesMarks = !marks_.empty() && *marks_.rbegin() >= kept;
    if (kept < rowCount_) {
        beginRemoveRows({}, kept, rowCount_ - 1);
        marks_.erase(marks_.lower_bound(kept), marks_.end());
        rowCount_ = kept;
        endRemoveRows();
    }
    if (kept < wanted) {
        beginInsertRows({}, kept, wanted - 1);
        text_ = std::move(text);
        rowCount_ = wanted;
        endInsertRows();
    } else {
        text_ = std::move(text);
    }
    if (losesMarks)
        Q_EMIT marksChanged();
}

void LogLineModel::toggleMark(int row) {
    if (row < 0 || row >= rowCount_)
        return;
    if (marks_.erase(row) == 0)
        marks_.insert(row);
    Q_EMIT dataChanged(index(row), index(row), {IsMarkedRole});
    Q_EMIT marksChanged();
}

void LogLineModel::unmarkAll() {
    const std::set<int> unmarked = std::exchange(marks_, {});
    for (const int row : unmarked)
        Q_EMIT dataChanged(index(row), index(row), {IsMarkedRole});
    if (!unmarked.empty())
        Q_EMIT marksChanged();
}

QStringList LogLineModel::markedLineIds() const {
    QStringList identities;
    for (const int row : marks_)
        identities.append(logLineId(row, text_->line(row)));
    return identities;
}

} // namespace zenlot
