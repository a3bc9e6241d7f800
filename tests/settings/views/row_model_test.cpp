#include "settings/views/bridge/row_model.hpp"

#include <gtest/gtest.h>

#include <string>

namespace velotap {
namespace {

QVariantMap row(const QString& id, int value = 0) {
  return {{QStringLiteral("id"), id}, {QStringLiteral("value"), value}};
}

class RowModelTest : public testing::Test {
 protected:
  RowModelTest() {
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
                     [this](const QModelIndex&, int i) { trace += "+" + std::to_string(i); });
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model,
                     [this](const QModelIndex&, int i) { trace += "-" + std::to_string(i); });
    QObject::connect(&model, &QAbstractItemModel::rowsMoved, &model, [this] { trace += "m"; });
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                     [this](const QModelIndex& i) { trace += "c" + std::to_string(i.row()); });
    QObject::connect(&model, &RowModel::countChanged, &model, [this] { trace += "#"; });
  }
  std::string sync(const QList<QVariantMap>& rows) {
    trace.clear();
    model.sync(rows);
    EXPECT_EQ(model.rows(), rows);
    return trace;
  }

  RowModel model;
  std::string trace;
};

TEST_F(RowModelTest, ReportsOnlyWhatChanged) {
  EXPECT_EQ(sync({}), "");
  EXPECT_EQ(sync({row("a"), row("b"), row("c")}), "+0+1+2#");
  EXPECT_EQ(sync({row("a"), row("b"), row("c")}), "");
  EXPECT_EQ(sync({row("a"), row("b", 1), row("c")}), "c1");
  EXPECT_EQ(sync({row("a"), row("c")}), "-1#");
  EXPECT_EQ(sync({row("c"), row("a")}), "m");
  EXPECT_EQ(sync({row("c"), row("x"), row("a")}), "+1#");
  EXPECT_EQ(sync({row("y")}), "-2-1-0+0#");
}

// A view that renumbers its rows with each of many changes is slower than one that starts afresh.
TEST_F(RowModelTest, ManyChangesAtOnceAreANewList) {
  int resets = 0;
  QObject::connect(&model, &QAbstractItemModel::modelReset, &model, [&resets] { ++resets; });
  QList<QVariantMap> rows;
  for (int i = 0; i < 16; ++i) rows.append(row(QString::number(i)));
  EXPECT_EQ(sync(rows).find('-'), std::string::npos);
  EXPECT_EQ(resets, 0) << "so few come one by one";
  for (int i = 16; i < 33; ++i) rows.append(row(QString::number(i)));
  EXPECT_EQ(sync(rows), "#");
  EXPECT_EQ(resets, 1);
  rows.removeFirst();
  EXPECT_EQ(sync(rows), "-0#");
  EXPECT_EQ(sync({row("31"), row("x")}), "#");
  EXPECT_EQ(resets, 2);
}

TEST_F(RowModelTest, GivesRowsToQml) {
  model.sync({row("a", 7)});
  const int role = model.roleNames().key("row");
  EXPECT_EQ(model.data(model.index(0), role).toMap(), row("a", 7));
  EXPECT_FALSE(model.data(model.index(0), Qt::DisplayRole).isValid());
  EXPECT_FALSE(model.data({}, role).isValid());
  EXPECT_EQ(model.rowCount(model.index(0)), 0);
}

}  // namespace
}  // namespace velotap
