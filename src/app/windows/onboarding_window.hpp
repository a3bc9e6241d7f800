// The onboarding on screen: one window, as tall as its content or the screen allows.
//
// Main thread. The model and the context outlive it.
#pragma once

#include <QQuickView>
#include <memory>

#include "app/onboarding.hpp"
#include "settings/views/bridge/view_context.hpp"
#include "settings/window/pane_object.hpp"

namespace velotap {

/// The content as QML sees it.
class OnboardingObject : public PaneObject {
  Q_OBJECT

 public:
  explicit OnboardingObject(Onboarding& model, QObject* parent = nullptr);

  void refresh() override;

  Q_INVOKABLE void openSettings() { model_.openAccessibilitySettings(); }
  Q_INVOKABLE void reveal() { model_.revealProgram(); }
  Q_INVOKABLE void later() { model_.setUpLater(); }
  Q_INVOKABLE void practise() { model_.tryMiddleClick(); }
  Q_INVOKABLE void goOn() { model_.continueToSettings(); }
  /// How tall the content would like to be.
  Q_INVOKABLE void setWanted(double height) { emit wantsHeight(height); }

 signals:
  void wantsHeight(double height);

 private:
  Onboarding& model_;
  Observation changes_;
};

class OnboardingWindow {
 public:
  OnboardingWindow(Onboarding& model, ViewContext& context, std::function<void()> openPractice);
  ~OnboardingWindow();

  /// What the model is given as its view.
  [[nodiscard]] Onboarding::View view();
  [[nodiscard]] QQuickView* window() { return window_.get(); }

 private:
  void create(const std::string& title, double maximumHeight);
  void fit(double height);
  void keepInside(QSize size);
  void centre();
  void drop();

  Onboarding& model_;
  ViewContext& context_;
  std::function<void()> openPractice_;
  double maximumHeight_ = 0;
  QObject alive_;  ///< what was put off until later goes with it
  std::unique_ptr<OnboardingObject> object_;
  std::unique_ptr<QQuickView> window_;
};

}  // namespace velotap
