#pragma once

// The list of observations as the rows of a Qt view.

#include <QAbstractListModel>

#include "state/application.h"

namespace glintara::desktop {

/// One row a line of `LIOD`. A row is edited in its place; a text that is no observation is refused there, and goes to
/// the field below the list, so that nobody types it twice.
class IODListModel : public QAbstractListModel {
  public:
    explicit IODListModel(Application& app) : app_(app) { Renew(); }

    /// Follows the list after its lines have changed. True when their number is another than before: then the view has
    /// lost its selection and its current row.
    bool Renew();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    Application& app_;
    int count_ = 0;
};

}  // namespace glintara::desktop
