// A list for QML, kept equal to a list of values.
//
// `sync` compares by each row's "id" and reports only what changed, so a row that stays keeps its
// view: the keyboard stays where it is and a switch that was just pressed finishes its movement.
// Where many rows come or go at once, as with a letter typed into a search field, all are new.
// Main thread.
#pragma once

#include <QAbstractListModel>
#include <QVariantMap>

namespace velotap {

class RowModel : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
  [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] const QList<QVariantMap>& rows() const { return rows_; }

  /// Every row has an "id" of its own.
  void sync(const QList<QVariantMap>& rows);

 signals:
  void countChanged();

 private:
  /// Takes the new list whole when it has little to do with the old one, of which so many stay.
  [[nodiscard]] bool replace(const QList<QVariantMap>& rows, qsizetype staying);
  [[nodiscard]] int find(const QVariant& id, int from) const;

  QList<QVariantMap> rows_;
};

}  // namespace velotap
