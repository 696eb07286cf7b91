#pragma once

// The satellite list as the rows of a Qt view.

#include <QAbstractListModel>
#include <QItemSelection>
#include <vector>

#include "state/common_data.h"

namespace glintara::desktop {

/// One row a satellite, in the order of the orbit numbers. The rows know their satellites by these numbers, because the
/// table changes its order whenever another satellite begins to work. The satellite that works is bold
/// and golden, those that are disabled are quiet.
class SatelliteListModel : public QAbstractListModel {
  public:
    explicit SatelliteListModel(CommonData& data) : data_(data) { Renew(); }

    /// Follows the table after satellites came, went or changed. True when the rows are others than before: then the
    /// view has lost its selection and its current row.
    bool Renew();

    /// Follows the table after its order has changed.
    void Reorder();

    /// `OrbitNumber` of a row's satellite.
    int OrbitNumberOf(int row) const { return rows_[static_cast<std::size_t>(row)].orbitNumber; }

    /// Row of the satellite with that `OrbitNumber`; -1 for none.
    int RowOf(int orbitNumber) const;

    /// The rows whose satellites are selected in the table or, when `selected` is false, those whose are not.
    QItemSelection RowsThatAre(bool selected) const;

    /// Selects in the table the satellites of these rows, and no others.
    void TakeSelection(const QItemSelection& selection);

    int rowCount(const QModelIndex& parent = {}) const override;
    /// The line of a satellite; as `Qt::UserRole`, its index in the table as it stands now.
    QVariant data(const QModelIndex& index, int role) const override;

    /// What is typed into the list finds a satellite by the beginning of its name or of its number; "T0001" is found as
    /// 270001 too.
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                          Qt::MatchFlags flags) const override;

  private:
    struct Row {
        int orbitNumber = 0;
        int index = 0;  // in the table, when the order was last looked at
    };

    std::vector<Row> RowsOfTable() const;
    const SatRecord* SatelliteOf(int row) const;

    CommonData& data_;
    std::vector<Row> rows_;
};

}  // namespace glintara::desktop
