// Filter Data and Data Loop figures on generated orders files.
//   loop_bench [records]   (default 1000000)
// Filter Data is timed twice: its row removal alone on a loaded table, and as
// a qmhost task minus the same task without the filter step. The Data Loop
// runs as a qmhost task (--quiet) that writes each row's number and content
// to variables with one end-loop step; its per-pass time is the task's time
// minus an open-only task, divided by the records, for a tenth of the records
// and for all of them. Task figures are the best of five runs, as clock time
// and as the qmhost process's CPU time. Prints one line per figure with its
// unit. Native only: it runs qmhost through the shell.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <sys/resource.h>

#include "core/utf.h"
#include "generate_orders.h"
#include "loop/filter_data.h"
#include "loop/record_filter.h"
#include "table/simple_csv_object.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kRepeats = 5;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::u16string WidePath(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return qm::Utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size()));
}

std::string Quoted(const fs::path& path) { return "\"" + path.string() + "\""; }

// The generated file as Open Data reads it: UTF-8, ";" between cells, a
// header line.
void Load(qm::TSimpleCSVDataClass& table, const fs::path& file) {
  table.SetDelimiter(u';');
  table.SetQuoteChar(u'"');
  table.SetStrictDelimiter(true);
  table.SetHeaderLine(true);
  table.SetEncoding(qm::TextEncoding::UTF8);
  if (!table.LoadFromCSVFile(WidePath(file))) {
    std::fprintf(stderr, "loop_bench: cannot load %s\n", file.string().c_str());
    std::exit(1);
  }
}

// Median seconds of FilterRows on a freshly loaded table; `kept` gets the
// rows left.
double TimeFilterRows(const fs::path& file, std::u16string_view condition, int32_t& kept) {
  std::vector<double> times;
  for (int i = 0; i < kRepeats; ++i) {
    qm::TSimpleCSVDataClass table;
    Load(table, file);
    qm::TRecordFilterList filters;
    filters.AddFilter(condition);
    const auto start = Clock::now();
    qm::FilterRows(table, filters, false);
    times.push_back(Seconds(start));
    kept = table.RecordCount();
  }
  return Median(times);
}

void WriteTask(const fs::path& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  if (!out) {
    std::fprintf(stderr, "loop_bench: cannot write %s\n", path.string().c_str());
    std::exit(1);
  }
}

struct TaskTime {
  double wall;  // seconds on the clock
  double cpu;   // user and system seconds of the qmhost process
};

double ChildCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  auto seconds = [](const timeval& t) { return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Best of several runs of a qmhost task with --quiet: the filter step is a
// difference of two task times, and the least disturbed runs subtract
// cleanly where medians of a noisy machine may not. The CPU time is the
// steadier figure on a busy machine; on an idle one the two agree.
TaskTime TimeTask(const fs::path& qmhost, const fs::path& task) {
  // Even a quiet run prints its outcome line.
  const std::string command = Quoted(qmhost) + " --quiet run " + Quoted(task) + " > /dev/null";
  std::vector<double> walls;
  std::vector<double> cpus;
  for (int i = 0; i < kRepeats; ++i) {
    const double cpuBefore = ChildCpuSeconds();
    const auto start = Clock::now();
    const int rc = std::system(command.c_str());
    walls.push_back(Seconds(start));
    cpus.push_back(ChildCpuSeconds() - cpuBefore);
    if (rc != 0) {
      std::fprintf(stderr, "loop_bench: %s failed (%d)\n", command.c_str(), rc);
      std::exit(1);
    }
  }
  return {*std::min_element(walls.begin(), walls.end()), *std::min_element(cpus.begin(), cpus.end())};
}

std::string OpenStep(const std::string& fileName) {
  return "[A_CSV_OPEN]\nsource=1\nfilename={taskdir}" + fileName + "\nencoding=2\nheaderline=1\n\n";
}

std::string FilterStep(const std::string& condition) {
  return "[A_CSV_FILTER]\nconditionscount=1\ncondition00000000=" + condition + "\n\n";
}

const std::string kLoopSteps = "[A_CSV_LOOP]\nrowvarname=n\nlinevarname=row\n\n[end-loop]\n\n";

}  // namespace

int main(int argc, char** argv) {
  const uint64_t records = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
  const uint64_t smaller = std::max<uint64_t>(records / 10, 1);
  const fs::path qmhost = QMHOST_PATH;
  // A folder of this run only: two runs at once must not share files.
  const fs::path work =
      fs::temp_directory_path() /
      ("qmcsv_loop_bench_" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
  fs::create_directories(work);

  const std::string bigName = "orders-" + std::to_string(records) + ".csv";
  const std::string smallName = "orders-" + std::to_string(smaller) + ".csv";
  qm::bench::WriteOrdersFile((work / bigName).string(), records);
  qm::bench::WriteOrdersFile((work / smallName).string(), smaller);

  // Status column contains "paid" (any case); product matches a pattern.
  const std::string substring = "9,paid,0,0";
  const std::string pattern = "5,^(widget|gadget)\\s[a-z]+$,0,1";

  int32_t kept = 0;
  double t = TimeFilterRows(work / bigName, qm::Utf8ToUtf16(substring), kept);
  std::printf("filter rows, substring %s, %llu records: %.3f s (%d kept)\n", substring.c_str(),
              static_cast<unsigned long long>(records), t, kept);
  t = TimeFilterRows(work / bigName, qm::Utf8ToUtf16(pattern), kept);
  std::printf("filter rows, regex %s, %llu records: %.3f s (%d kept)\n", pattern.c_str(),
              static_cast<unsigned long long>(records), t, kept);

  // The same through qmhost: the filter step is the difference to the task
  // that only opens the file.
  WriteTask(work / "open.qmt", OpenStep(bigName));
  WriteTask(work / "filter-substring.qmt", OpenStep(bigName) + FilterStep(substring));
  WriteTask(work / "filter-regex.qmt", OpenStep(bigName) + FilterStep(pattern));
  const TaskTime open = TimeTask(qmhost, work / "open.qmt");
  std::printf("qmhost open task, %llu records: %.3f s (cpu %.3f s)\n", static_cast<unsigned long long>(records),
              open.wall, open.cpu);
  for (const char* kind : {"substring", "regex"}) {
    const TaskTime filter = TimeTask(qmhost, work / ("filter-" + std::string(kind) + ".qmt"));
    std::printf("qmhost filter step, %s: %.3f s (cpu %.3f s)\n", kind, filter.wall - open.wall, filter.cpu - open.cpu);
  }

  // Data Loop over every record: the task's time, and the time per pass.
  for (const auto& [count, name] : {std::pair{smaller, smallName}, std::pair{records, bigName}}) {
    const std::string stem = std::to_string(count);
    WriteTask(work / ("open-" + stem + ".qmt"), OpenStep(name));
    WriteTask(work / ("loop-" + stem + ".qmt"), OpenStep(name) + kLoopSteps);
    const TaskTime openOnly = TimeTask(qmhost, work / ("open-" + stem + ".qmt"));
    const TaskTime loop = TimeTask(qmhost, work / ("loop-" + stem + ".qmt"));
    const auto n = static_cast<double>(count);
    std::printf("qmhost loop task, %llu records: %.3f s (cpu %.3f s; open alone %.3f s, cpu %.3f s)\n",
                static_cast<unsigned long long>(count), loop.wall, loop.cpu, openOnly.wall, openOnly.cpu);
    std::printf("loop pass, %llu records: %.3f us per pass (cpu %.3f us)\n", static_cast<unsigned long long>(count),
                (loop.wall - openOnly.wall) / n * 1e6, (loop.cpu - openOnly.cpu) / n * 1e6);
  }

  fs::remove_all(work);
  return 0;
}
