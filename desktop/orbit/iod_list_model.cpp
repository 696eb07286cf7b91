#include "desktop/orbit/iod_list_model.h"

#include <QSize>

#include "desktop/main/bindings.h"
#include "orbit/observations.h"

namespace glintara::desktop {

bool IODListModel::Renew() {
    const int count = app_.Observations.LIOD.Count();
    if (count == count_) {
        if (count > 0) Q_EMIT dataChanged(index(0), index(count - 1));
        return false;
    }
    beginResetModel();
    count_ = count;
    endResetModel();
    return true;
}

int IODListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count_; }

QVariant IODListModel::data(const QModelIndex& index, int role) const {
    constexpr int kRowHeight = 20;  // room for the field in which a line is edited
    const ListBox& list = app_.Observations.LIOD;
    if (!index.isValid() || index.row() >= list.Count()) return {};
    if (role == Qt::SizeHintRole) return QSize(0, kRowHeight);
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    return ToQt(list.Lines.Get()[static_cast<std::size_t>(index.row())]);
}

bool IODListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || value == data(index, role)) return false;
    const std::string text = FromQt(value.toString());
    if (observations::ReplaceIODLine(app_, index.row(), text)) return true;
    app_.Observations.TIODLine.Text = text;
    return false;
}

Qt::ItemFlags IODListModel::flags(const QModelIndex& index) const {
    return QAbstractListModel::flags(index) | Qt::ItemIsEditable;
}

}  // namespace glintara::desktop
