#include "settings/views/bridge/row_model.hpp"

#include <QSet>
#include <algorithm>
#include <utility>

namespace velotap {
namespace {

constexpr int kRow = Qt::UserRole + 1;

// Each row that comes or goes makes a view renumber those below it. From so many on, a view is
// quicker with a new list.
constexpr qsizetype kManyChanges = 16;

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

bool RowModel::replace(const QList<QVariantMap>& rows, qsizetype staying) {
  if (count() + rows.size() - 2 * staying <= kManyChanges) return false;
  beginResetModel();
  rows_ = rows;
  endResetModel();
  return true;
}

void RowModel::sync(const QList<QVariantMap>& rows) {
  const int before = count();
  QSet<QString> staying;
  for (const QVariantMap& row : rows) staying.insert(idOf(row).toString());
  const auto stay = std::count_if(rows_.begin(), rows_.end(), [&staying](const QVariantMap& row) {
    return staying.contains(idOf(row).toString());
  });
  if (replace(rows, stay)) {
    if (count() != before) emit countChanged();
    return;
  }
  for (int i = count() - 1; i >= 0; --i) {
    if (staying.contains(idOf(rows_.at(i)).toString())) continue;
    beginRemoveRows({}, i, i);
    rows_.removeAt(i);
    endRemoveRows();
  }
  QSet<QString> known;
  for (const QVariantMap& row : std::as_const(rows_)) known.insert(idOf(row).toString());
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const QVariant id = idOf(rows.at(i));
    // Rows mostly stand where they did; one that was not there is not looked for.
    const bool isThere = i < count() && idOf(rows_.at(i)) == id;
    const int found = isThere ? i : known.contains(id.toString()) ? find(id, i) : -1;
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
