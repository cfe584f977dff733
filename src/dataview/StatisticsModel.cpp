#include "dataview/StatisticsModel.h"

#include "controls/KeyedItem.h"
#include "session/DisplayValue.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kFirstFigure = 4;
constexpr const char* kHeadKeys[] = {"IUS", "Count", "Min", "Max", "Avg", "StdDev"};
constexpr QRgb kIndicatorShade = 0xE1E1E1;
constexpr QRgb kUnitShade = 0xF0F0F0;

QString TextOf(const StatsLine& line, int column) {
    switch (column) {
    case StatisticsModel::kNameColumn:
        return QString(2 * static_cast<int>(line.level), QChar(0x2002)) + line.name;
    case kFirstFigure:
        return DisplayedValue(line.count);
    case kFirstFigure + 1:
        return DisplayedValue(line.minimum);
    case kFirstFigure + 2:
        return DisplayedValue(line.maximum);
    case kFirstFigure + 3:
        return DisplayedValue(line.average);
    case kFirstFigure + 4:
        return DisplayedValue(line.deviation);
    default:
        return {};
    }
}

/// The two shades on a light ground; on a dark one as much lighter than it.
QVariant ShadeOf(StatsLevel level) {
    if (level == StatsLevel::Subpop) return {};
    const QColor base = QGuiApplication::palette().color(QPalette::Base);
    if (base.lightness() > 128)
        return QBrush(QColor::fromRgb(level == StatsLevel::Indicator ? kIndicatorShade : kUnitShade));
    return QBrush(base.lighter(level == StatsLevel::Indicator ? 170 : 135));
}

} // namespace

StatisticsModel::StatisticsModel(QObject* parent) : QAbstractTableModel(parent) {}

void StatisticsModel::SetLines(std::vector<StatsLine> lines) {
    beginResetModel();
    lines_ = std::move(lines);
    open_.assign(lines_.size(), false);
    shown_.clear();
    for (std::size_t line = 0; line < lines_.size(); ++line)
        if (lines_[line].level == StatsLevel::Indicator) shown_.push_back(static_cast<int>(line));
    endResetModel();
}

const StatsLine& StatisticsModel::LineOf(int row) const {
    return lines_[static_cast<std::size_t>(shown_[static_cast<std::size_t>(row)])];
}

int StatisticsModel::EndOf(int line) const {
    int end = line + 1;
    while (end < static_cast<int>(lines_.size()) &&
           lines_[static_cast<std::size_t>(end)].level > lines_[static_cast<std::size_t>(line)].level)
        ++end;
    return end;
}

StatsLevel StatisticsModel::LevelOf(int row) const {
    return LineOf(row).level;
}

bool StatisticsModel::HasChildren(int row) const {
    const int line = shown_[static_cast<std::size_t>(row)];
    return EndOf(line) > line + 1;
}

bool StatisticsModel::IsOpen(int row) const {
    return open_[static_cast<std::size_t>(shown_[static_cast<std::size_t>(row)])];
}

void StatisticsModel::Toggle(int row) {
    if (row < 0 || row >= rowCount() || !HasChildren(row)) return;
    const int line = shown_[static_cast<std::size_t>(row)];
    const int end = EndOf(line);
    const auto after = shown_.begin() + row + 1;
    if (IsOpen(row)) {
        const auto last = std::lower_bound(after, shown_.end(), end);
        const int count = static_cast<int>(last - after);
        beginRemoveRows({}, row + 1, row + count);
        shown_.erase(after, last);
        endRemoveRows();
        std::fill(open_.begin() + line, open_.begin() + end, false);
    } else {
        const auto childLevel =
            static_cast<StatsLevel>(static_cast<int>(lines_[static_cast<std::size_t>(line)].level) + 1);
        std::vector<int> children;
        for (int child = line + 1; child < end; ++child)
            if (lines_[static_cast<std::size_t>(child)].level == childLevel) children.push_back(child);
        beginInsertRows({}, row + 1, row + static_cast<int>(children.size()));
        shown_.insert(after, children.begin(), children.end());
        endInsertRows();
        // Set after the insertion, during which no other row may change.
        open_[static_cast<std::size_t>(line)] = true;
    }
    Q_EMIT dataChanged(index(row, 0), index(row, MaxCols - 1));
}

int StatisticsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int StatisticsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MaxCols;
}

QString StatisticsModel::MarkOf(int row, int column) const {
    if (column != static_cast<int>(LineOf(row).level) || !HasChildren(row)) return {};
    return IsOpen(row) ? QStringLiteral("minus.bmp") : QStringLiteral("plus.bmp");
}

LongestTexts StatisticsModel::Longest(int column) const {
    LongestTexts texts;
    for (const StatsLine& line : lines_)
        texts.Take(TextOf(line, column));
    return texts;
}

QVariant StatisticsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const StatsLine& line = LineOf(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(line, index.column());
    case kMarkRole:
        return MarkOf(index.row(), index.column());
    case Qt::AccessibleTextRole:
        if (const QString mark = MarkOf(index.row(), index.column()); !mark.isEmpty())
            return IsOpen(index.row()) ? QStringLiteral("\u2212") : QStringLiteral("+");
        return TextOf(line, index.column());
    case Qt::ToolTipRole:
        return index.column() == kNameColumn ? TipOf(line.name) : QVariant();
    case Qt::BackgroundRole:
        return ShadeOf(line.level);
    case Qt::ForegroundRole:
        if (index.column() == kNameColumn && line.isGlobal && ShowGlobalColor)
            return QBrush(ColorFromNumber(GlobalColor));
        return {};
    case Qt::TextAlignmentRole:
        if (index.column() >= kFirstFigure)
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        return QVariant::fromValue((index.column() < kNameColumn ? Qt::AlignHCenter : Qt::AlignLeading) |
                                   Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant StatisticsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole) return section + 1;
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    if (section < 0 || section >= MaxCols) return {};
    if (role == Qt::DisplayRole)
        return section < kNameColumn ? QString() : GetText(QLatin1String(kHeadKeys[section - kNameColumn]));
    if (role == Qt::TextAlignmentRole)
        return section >= kFirstFigure ? QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter)
                                       : QVariant::fromValue(Qt::AlignLeading | Qt::AlignVCenter);
    return {};
}

void StatisticsModel::Refresh() {
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, MaxCols - 1);
    if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, MaxCols - 1));
}

} // namespace tessaro
