#pragma once

// A list of places as the rows of a Qt view.

#include <QAbstractListModel>

#include "state/application.h"

namespace glintara::desktop {

/// One row a line of `list`, which must outlive it; its tool tip tells the place.
class PlaceListModel : public QAbstractListModel {
  public:
    PlaceListModel(const CommonData& data, const PlaceListBox& list) : data_(data), list_(list) {}

    /// Follows the list after its lines have changed.
    void Renew();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    const CommonData& data_;
    const PlaceListBox& list_;
};

}  // namespace glintara::desktop
