// A sign of life on a long run: once a second, on stderr, the step that is
// running, how long it has run and the pass of the loop it is in.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace qmhost {

class Progress {
 public:
  // Starts the reporting thread: a line a second from the first second on.
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // The step that starts now; `pass` is the pass of its loop (0: no loop).
  void StepStarted(int32_t step, const std::string& action, uint64_t pass);

 private:
  void Report();

  std::mutex mutex_;
  std::condition_variable wake_;
  bool stopping_ = false;
  int32_t step_ = -1;
  std::string action_;
  uint64_t pass_ = 0;
  std::chrono::steady_clock::time_point started_;
  std::thread thread_;
};

}  // namespace qmhost
