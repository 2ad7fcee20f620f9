#include "progress.h"

#include <cstdio>

#include "transcript.h"

namespace qmhost {

Progress::Progress() : thread_([this] { Report(); }) {}

Progress::~Progress() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void Progress::StepStarted(int32_t step, const std::string& action, uint64_t pass) {
  std::lock_guard<std::mutex> lock(mutex_);
  step_ = step;
  action_ = action;
  pass_ = pass;
  started_ = std::chrono::steady_clock::now();
}

void Progress::Report() {
  using Seconds = std::chrono::duration<double>;
  const auto begun = std::chrono::steady_clock::now();
  std::unique_lock<std::mutex> lock(mutex_);
  while (!wake_.wait_for(lock, std::chrono::seconds(1), [this] { return stopping_; })) {
    if (step_ < 0) continue;
    const auto now = std::chrono::steady_clock::now();
    char text[160];
    std::snprintf(text, sizeof text, "qmhost: %.1f s: step %d %s, running for %.1f s", Seconds(now - begun).count(),
                  static_cast<int>(step_), action_.c_str(), Seconds(now - started_).count());
    PrintError(text + (pass_ > 0 ? ", loop pass " + std::to_string(pass_) : std::string()));
  }
}

}  // namespace qmhost
