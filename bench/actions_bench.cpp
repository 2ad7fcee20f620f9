// Whole tasks through the reference host on a generated orders file: each
// figure is the wall time of one `qmhost --quiet run` (start, load the
// plug-in, run the task, stop), the median of a few runs.
//   actions_bench [records] [runs]   (default 1000000 records, 5 runs)
// Prints one line per figure with its unit.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/resource.h>

#include "generate_orders.h"

#ifndef QMHOST_PATH
#error "QMHOST_PATH must name the qmhost program"
#endif

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Figure {
  const char* name;
  const char* action;  // the step between the open and the save, if any
  bool save;
};

// The file has a header line, ";" between cells and is UTF-8; column 8 holds
// the order totals and column 3 the customer names.
constexpr char kOpen[] =
    "[A_CSV_OPEN]\nsource=1\nfilename=orders.csv\nencoding=2\nheaderline=1\n\n";
constexpr char kSave[] = "[A_CSV_SAVE]\nsavetofile=1\ntargetfilename=saved.csv\ntargetencoding=2\n\n";

const Figure kFigures[] = {
    {"open_save", "", true},
    {"open_sort_number_save", "[A_CSV_SORT]\nsortcolumn=8\nsortmode=1\n\n", true},
    {"open_sort_text_nocase_save", "[A_CSV_SORT]\nsortcolumn=3\n\n", true},
    {"open_remove_duplicates_save", "[A_CSV_REMOVEDUPL]\nvarname=removed\n\n", true},
    {"open_info", "[A_CSV_INFO]\nrecordcountvar=records\ncolcountvar=columns\n\n", false},
};

// Processor time (user and system) of the finished child processes so far:
// on a busy machine it shows what a task costs apart from waiting for a core.
double ChildCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  auto seconds = [](const timeval& t) { return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

}  // namespace

int main(int argc, char** argv) {
  const unsigned long long records = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000ull;
  const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  const fs::path dir = fs::temp_directory_path() / ("qmcsv_actions_bench_" + std::to_string(records));
  fs::create_directories(dir);
  const fs::path input = dir / "orders.csv";
  const double mb = static_cast<double>(qm::bench::WriteOrdersFile(input.string(), records)) / 1e6;
  std::printf("records: %llu\n", records);
  std::printf("file_size: %.1f MB\n", mb);

  for (const Figure& figure : kFigures) {
    const fs::path task = dir / (std::string(figure.name) + ".qmt");
    {
      std::ofstream out(task, std::ios::binary);
      out << kOpen << figure.action << (figure.save ? kSave : "");
    }
    const std::string command =
        "cd " + Quoted(dir) + " && " + Quoted(QMHOST_PATH) + " --quiet run " + Quoted(task) + " > /dev/null";
    std::vector<double> times, cpu;
    for (int run = 0; run < runs; ++run) {
      // Each run saves to a new file, as the figures are defined. Replacing
      // the file of the run before would also time the kernel finishing that
      // file's write-back when it is deleted.
      fs::remove(dir / "saved.csv");
      const auto start = Clock::now();
      const double cpuStart = ChildCpuSeconds();
      if (std::system(command.c_str()) != 0) {
        std::fprintf(stderr, "%s: the task failed\n", figure.name);
        return 1;
      }
      times.push_back(std::chrono::duration<double>(Clock::now() - start).count());
      cpu.push_back(ChildCpuSeconds() - cpuStart);
    }
    std::printf("%s: %.3f s\n", figure.name, Median(times));
    std::printf("%s_best: %.3f s\n", figure.name, *std::min_element(times.begin(), times.end()));
    std::printf("%s_cpu: %.3f s\n", figure.name, Median(cpu));
  }

  std::error_code ignored;
  fs::remove_all(dir, ignored);
  return 0;
}
