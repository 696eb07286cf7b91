#include "desktop/orbit/satellite_list_model.h"

#include <QBrush>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QSize>
#include <algorithm>

#include "desktop/main/bindings.h"
#include "desktop/main/style.h"
#include "engine/astro/number_text.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {

namespace {

constexpr int kListPixels = 11;
constexpr int kRowHeight = 18;

}  // namespace

std::vector<SatelliteListModel::Row> SatelliteListModel::RowsOfTable() const {
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(data_.SatCount));
    for (int index = 1; index <= data_.SatCount; ++index) rows.push_back({data_.Satellite(index).OrbitNumber, index});
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Row& a, const Row& b) { return a.orbitNumber < b.orbitNumber; });
    return rows;
}

bool SatelliteListModel::Renew() {
    std::vector<Row> rows = RowsOfTable();
    const bool same = std::equal(rows.begin(), rows.end(), rows_.begin(), rows_.end(),
                                 [](const Row& a, const Row& b) { return a.orbitNumber == b.orbitNumber; });
    if (same) {
        Reorder();
        return false;
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    return true;
}

void SatelliteListModel::Reorder() {
    std::vector<Row> rows = RowsOfTable();
    if (rows.size() != rows_.size()) return;  // `Renew` is on its way
    rows_ = std::move(rows);
    if (!rows_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

int SatelliteListModel::RowOf(int orbitNumber) const {
    const auto row = std::lower_bound(rows_.begin(), rows_.end(), orbitNumber,
                                      [](const Row& a, int number) { return a.orbitNumber < number; });
    return row != rows_.end() && row->orbitNumber == orbitNumber ? static_cast<int>(row - rows_.begin()) : -1;
}

const SatRecord* SatelliteListModel::SatelliteOf(int row) const {
    const Row& known = rows_[static_cast<std::size_t>(row)];
    int index = known.index;
    // The order may have changed since: then the number tells.
    if (index > data_.SatCount || data_.Satellite(index).OrbitNumber != known.orbitNumber)
        index = SearchOrbitNumber(data_, known.orbitNumber);
    return index == 0 ? nullptr : &data_.Satellite(index);
}

QItemSelection SatelliteListModel::RowsThatAre(bool selected) const {
    QItemSelection ranges;
    const auto is = [this, selected](int row) {
        const SatRecord* const satellite = SatelliteOf(row);
        return satellite != nullptr && satellite->Selected == selected;
    };
    const int count = rowCount();
    for (int row = 0; row < count; ++row) {
        if (!is(row)) continue;
        const int first = row;
        while (row + 1 < count && is(row + 1)) ++row;
        ranges.append(QItemSelectionRange(index(first), index(row)));
    }
    return ranges;
}

void SatelliteListModel::TakeSelection(const QItemSelection& selection) {
    Reorder();
    for (int index = 1; index <= data_.SatCount; ++index) data_.Satellite(index).Selected = false;
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const Row& known = rows_[static_cast<std::size_t>(row)];
            if (known.index <= data_.SatCount) data_.Satellite(known.index).Selected = true;
        }
    }
}

int SatelliteListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SatelliteListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    if (role == Qt::SizeHintRole) return QSize(0, kRowHeight);  // as wide as the list
    const SatRecord* const satellite = SatelliteOf(index.row());
    if (satellite == nullptr) return {};
    if (role == Qt::DisplayRole) return ToQt(ShownName(SatelliteListLine(*satellite)));
    if (role == Qt::UserRole) return static_cast<int>(satellite - data_.SatTable.data());
    const bool working = satellite == &data_.Satellite(data_.SatCount);
    if (role == Qt::FontRole && working) {
        QFont font = NumberFont(kListPixels);
        font.setBold(true);
        return font;
    }
    if (role == Qt::ForegroundRole && working) return QBrush(QGuiApplication::palette().color(QPalette::Highlight));
    if (role == Qt::ForegroundRole && satellite->IsDisabled())
        return QBrush(QGuiApplication::palette().color(QPalette::PlaceholderText));
    if (role == Qt::AccessibleTextRole && working) return ToQt(ShownName(SatelliteListLine(*satellite))) + ", working";
    return {};
}

QModelIndexList SatelliteListModel::match(const QModelIndex& start, int role, const QVariant& value, int hits,
                                          Qt::MatchFlags flags) const {
    if (role != Qt::DisplayRole || !flags.testFlag(Qt::MatchStartsWith))
        return QAbstractListModel::match(start, role, value, hits, flags);
    const QString typed = value.toString();
    const int count = rowCount();
    const int rowsToLookAt = flags.testFlag(Qt::MatchWrap) ? count : count - start.row();
    QModelIndexList found;
    for (int k = 0; k < rowsToLookAt && (hits < 0 || found.size() < hits); ++k) {
        const int row = (start.row() + k) % count;
        const SatRecord* const satellite = SatelliteOf(row);
        if (satellite == nullptr) continue;
        const auto begins = [&typed](const std::string& text) {
            return ToQt(text).startsWith(typed, Qt::CaseInsensitive);
        };
        const std::string number(TrimmedText(satellite->SatNumber));
        const double value = SatelliteNumberValue(number);
        if (begins(satellite->Name) || begins(number) || (value > 99999 && begins(PlainNumberText(value))))
            found.append(index(row));
    }
    return found;
}

}  // namespace glintara::desktop
