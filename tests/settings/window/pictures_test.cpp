// Pictures of the settings window against those that were looked at and found good.
//
// What the program's own captures show, light and dark, and every other state of the window. They
// are kept as blocks (block_picture.hpp) in the folder `pictures`; after a change that was meant,
// scripts/renew-pictures makes them anew. Of a picture that differs the whole is written beside the
// build, and the failure says where. Type comes from the program and from fonts.conf alone.

#include <QDir>
#include <QPainter>
#include <QTemporaryDir>

#include "block_picture.hpp"
#include "scene.hpp"
#include "settings/capture/qt_capture_studio.hpp"

namespace velotap::test {
namespace {

const QDir kReferences(QStringLiteral(VELOTAP_REFERENCES));
const QDir kFailures(QStringLiteral(VELOTAP_FAILURES));

const QStringList kInHighContrast = {
    QStringLiteral("general-permission"), QStringLiteral("gestures-filtered"),
    QStringLiteral("tuning-custom"),      QStringLiteral("apps-missing"),
    QStringLiteral("apps-add"),           QStringLiteral("practice-other"),
    QStringLiteral("about-snapshot")};

bool renewing() {
  return qEnvironmentVariableIsSet("VELOTAP_RENEW_PICTURES");
}

std::string kept(const QImage& picture, const QString& name) {
  const QString path = kFailures.filePath(name);
  if (!QDir().mkpath(QFileInfo(path).path()) || !picture.save(path)) return "nowhere";
  return path.toStdString();
}

void compare(const QImage& picture, const QString& name) {
  const QString path = kReferences.filePath(name);
  const QImage blocks = blocksOf(picture);
  if (renewing()) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()) && blocks.save(path)) << path.toStdString();
    return;
  }
  const QImage reference(path);
  ASSERT_FALSE(reference.isNull())
      << path.toStdString() << " is missing; the picture is in " << kept(picture, name);
  const auto difference = blockDifference(blocks, reference);
  ASSERT_TRUE(difference) << name.toStdString() << " has another size; it is in "
                          << kept(picture, name);
  EXPECT_TRUE(isAlike(*difference))
      << name.toStdString() << " differs by " << difference->mean << " on average and by "
      << difference->worst << " at " << difference->where.x() * kBlockSide << ","
      << difference->where.y() * kBlockSide << "; it is in " << kept(picture, name);
}

class PicturesTest : public SceneTest {};
class CapturedPictures : public ViewTest {};

void compareCaptures(bool dark) {
  const QTemporaryDir folder;
  QtCaptureStudio studio("en_US", "1.0", "1");
  CaptureRequest request{.folder = folder.path().toStdString(), .scenes = {}, .dark = dark};
  request.scenes = {CaptureScene::gestures, CaptureScene::tuning, CaptureScene::apps,
                    CaptureScene::practice, CaptureScene::devices};
  ASSERT_EQ(studio.prepare(request, captureSettings()), std::nullopt);
  for (const CaptureShot& shot : captureShots(request.scenes)) {
    const QString name = QString::fromStdString(shot.fileName());
    const QString path = folder.filePath(name);
    ASSERT_TRUE(std::holds_alternative<CapturedImage>(studio.render(shot, path.toStdString())));
    compare(QImage(path), (dark ? QStringLiteral("dark/") : QStringLiteral("light/")) + name);
  }
}

TEST_F(CapturedPictures, AreAsTheyWereInLight) {
  compareCaptures(false);
}

TEST_F(CapturedPictures, AreAsTheyWereInDark) {
  compareCaptures(true);
}

TEST_F(PicturesTest, StatesAreAsTheyWere) {
  for (const SceneState& state : sceneStates()) {
    open("en", state, 560);
    compare(settings->view()->grabWindow(),
            QStringLiteral("states/%1.png").arg(QLatin1String(state.name)));
  }
}

TEST_F(PicturesTest, HighContrastIsAsItWas) {
  context.setLook({.scheme = ColorScheme::dark, .highContrast = true});
  for (const SceneState& state : sceneStates()) {
    const QString name = QLatin1String(state.name);
    if (!kInHighContrast.contains(name)) continue;
    open("en", state, 560);
    compare(settings->view()->grabWindow(), QStringLiteral("contrast/%1.png").arg(name));
  }
}

QImage card(bool on, int shift) {
  QImage image(160, 80, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setPen(Qt::black);
  for (int x = 0; x < 60; x += 3) painter.drawLine(8 + shift + x, 20, 8 + shift + x, 30);
  painter.fillRect(110, 20, 38, 22, on ? QColor(0x25, 0x63, 0xeb) : QColor(0x84, 0x8c, 0x9c));
  return image;
}

TEST(BlockPicture, IsAlikeForWhatMachinesDoDifferently) {
  const auto difference = blockDifference(blocksOf(card(true, 1)), blocksOf(card(true, 0)));
  ASSERT_TRUE(difference);
  EXPECT_TRUE(isAlike(*difference)) << difference->mean << " " << difference->worst;
}

TEST(BlockPicture, IsNotAlikeForASwitchThatIsOff) {
  const auto difference = blockDifference(blocksOf(card(true, 0)), blocksOf(card(false, 0)));
  ASSERT_TRUE(difference);
  EXPECT_FALSE(isAlike(*difference)) << difference->mean << " " << difference->worst;
  EXPECT_EQ(difference->where.y(), 3);
}

TEST(BlockPicture, HasALimitOnEitherMeasure) {
  EXPECT_TRUE(isAlike({.mean = kMeanTolerance, .worst = kWorstTolerance, .where = {}}));
  EXPECT_FALSE(isAlike({.mean = kMeanTolerance + 0.01, .worst = 0, .where = {}}));
  EXPECT_FALSE(isAlike({.mean = 0, .worst = kWorstTolerance + 1, .where = {}}));
  EXPECT_FALSE(
      blockDifference(QImage(2, 2, QImage::Format_RGB888), QImage(2, 3, QImage::Format_RGB888)));
}

}  // namespace
}  // namespace velotap::test
