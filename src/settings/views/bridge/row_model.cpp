#include "settings/views/bridge/row_model.hpp"

#include <algorithm>

namespace velotap {
namespace {

constexpr int kRow = Qt::UserRole + 1;

QVariant idOf(const QVariantMap& row) {
  return row.value(QStringLiteral("id"));
}

}  // namespace

int RowModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != kRow) return {};
  return rows_.at(index.row());
}

QHash<int, QByteArray> RowModel::roleNames() const {
  return {{kRow, "row"}};
}

int RowModel::find(const QVariant& id, int from) const {
  for (int i = from; i < count(); ++i) {
    if (idOf(rows_.at(i)) == id) return i;
  }
  return -1;
}

void RowModel::sync(const QList<QVariantMap>& rows) {
  const int before = count();
  for (int i = count() - 1; i >= 0; --i) {
    const QVariant id = idOf(rows_.at(i));
    const bool stays = std::any_of(rows.begin(), rows.end(),
                                   [&id](const QVariantMap& row) { return idOf(row) == id; });
    if (stays) continue;
    beginRemoveRows({}, i, i);
    rows_.removeAt(i);
    endRemoveRows();
  }
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const int found = find(idOf(rows.at(i)), i);
    if (found < 0) {
      beginInsertRows({}, i, i);
      rows_.insert(i, rows.at(i));
      endInsertRows();
      continue;
    }
    if (found != i) {
      beginMoveRows({}, found, found, {}, i);
      rows_.move(found, i);
      endMoveRows();
    }
    if (rows_.at(i) == rows.at(i)) continue;
    rows_[i] = rows.at(i);
    emit dataChanged(index(i), index(i), {kRow});
  }
  if (count() != before) emit countChanged();
}

}  // namespace velotap
