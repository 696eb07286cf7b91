#include "desktop/flare/place_list_model.h"

#include "desktop/main/bindings.h"
#include "flare/cities.h"

namespace glintara::desktop {

void PlaceListModel::Renew() {
    beginResetModel();
    endResetModel();
}

int PlaceListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : list_.Count(); }

QVariant PlaceListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= list_.Count()) return {};
    if (role == Qt::DisplayRole) return ToQt(list_.Lines.Get()[static_cast<std::size_t>(index.row())]);
    if (role == Qt::ToolTipRole) return ToQt(PlaceToolTip(data_, list_, index.row()));
    return {};
}

}  // namespace glintara::desktop
