#include "shell/logviewer/log_line_model.h"

#include "text/display_line.h"

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// Longer ones are cut off in the list: laying out megabytes of text takes seconds.
constexpr qsizetype kLongestShownLine = 4000;

QString shownText(QByteArrayView line) {
    if (line.endsWith('\r'))
        line.chop(1);
    // A character takes at most four bytes; one that is cut in two is beyond what is shown.
    QString text =
        QString::fromUtf8(line.first(std::min(line.size(), 4 * (kLongestShownLine + 2))));
    // The one control character that people put into lines to be looked at.
    text.replace(u'\t', u"    "_s);
    return displayLine(text, kLongestShownLine);
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
        return shownText(text_->line(index.row()).text);
    case TintRole:
        return static_cast<int>(text_->tint(index.row()));
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
    const int equal = static_cast<int>(equalLines);
    const int wanted = static_cast<int>(text->lineCount());
    const int kept = std::min(rowCount_, wanted);
    // Some hundred at the most: people set them by hand.
    const auto lost = std::erase_if(marks_, [&](int row) {
        return row >= equal && (row >= wanted || text->line(row) != text_->line(row));
    });
    if (kept < rowCount_) {
        beginRemoveRows({}, kept, rowCount_ - 1);
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
    if (equal < kept)
        Q_EMIT dataChanged(index(equal), index(kept - 1));
    if (lost > 0)
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

QStringList LogLineModel::markedLineIDs() const {
    QStringList identities;
    for (const int row : marks_)
        identities.append(text_->line(row).id());
    return identities;
}

} // namespace zenlot
