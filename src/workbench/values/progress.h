// A sign of life from long work, and a way to end it.
#pragma once

#include <cstdint>

namespace tiepoint::workbench {

enum class Stage { naming, iterating, adjusting, movingClouds };

/// Told by those who work, on their own thread. What is there does nothing.
class Progress {
 public:
  Progress() = default;
  virtual ~Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  virtual void begin(Stage) {}
  /// `done` of `total` steps of the stage; 0 of 0 where their number isn't known.
  virtual void advance(std::uint64_t /*done*/, std::uint64_t /*total*/) {}
  virtual void end() {}
  /// Whether the work shall end at the next step; it then throws Refused (cancelled).
  virtual bool isCancelled() const { return false; }
};

/// A stage that ends with the scope.
class StageScope {
 public:
  StageScope(Progress& progress_, Stage stage) : progress(progress_) { progress.begin(stage); }
  ~StageScope() { progress.end(); }
  StageScope(const StageScope&) = delete;
  StageScope& operator=(const StageScope&) = delete;

 private:
  Progress& progress;
};

/// One step: reports it, or throws Refused when the work is cancelled.
void step(Progress& progress, std::uint64_t done, std::uint64_t total);

}  // namespace tiepoint::workbench
