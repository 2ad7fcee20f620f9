// Whole tasks through the reference host on a generated orders file, for the
// native build and for the Win64 build under Wine in one run: each figure is
// the wall time of one `qmhost --quiet --time run` (start, load the plug-in,
// run the task, stop), the median of a few runs, with its processor time, the
// process's peak memory and the task's own time in the process (the sum of
// the step times, "time in steps", qmhost prints: the plug-in's work without
// the process's or Wine's start). Each job is then shown as the ratio Win64 / native, of the
// whole task and of the time in process.
//   actions_bench [--records N] [--runs N] [--large] [--native-only]
//                 [--native-host PATH] [--win64-host PATH] [--wine PROGRAM]
//                 [--peers FOLDER]
//   --large       10,000,000 records, 3 runs (unless given)
//   --peers       also time each job (but the loop) with DuckDB and Polars,
//                 those of them installed in FOLDER by
//                 `npm install @duckdb/node-api nodejs-polars` (bench/peers.mjs
//                 says what each job does there); whole processes, all cores
//   --native-host another native qmhost than this build's (say, a copy of
//                 an earlier build, for figures before and after a change)
//   --win64-host  the Win64 qmhost.exe (default: the win64 preset's build
//                 tree next to this one); its Wine prefix is the one beside
//                 its bin folder, as the win64 tests use it
// Saved files are hashed so that runs of different builds and commits can be
// compared byte for byte. Each build's empty task (one typed line) is timed
// too, and each ratio is also given without it: what starting the host costs
// (under Wine, starting Wine) apart from the job. `system_share_open_save`
// times what the system alone does for open+save, in this process: reading
// the file in the reader's pieces, handing out as much fresh memory as the
// native build's loaded table takes, writing the file. Prints one line per
// figure with its unit.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "generate_orders.h"

#ifndef QMHOST_PATH
#error "QMHOST_PATH must name the qmhost program"
#endif
#ifndef QMHOST_WIN64_PATH
#error "QMHOST_WIN64_PATH must name the Win64 qmhost program's usual place"
#endif

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Job {
  const char* name;
  const char* steps;  // the steps after the open, if any
  bool save;
};

// The file has a header line, ";" between cells and is UTF-8; column 3 holds
// the customer names, 4 the cities, 8 the order totals and 9 the status.
constexpr char kOpen[] = "[A_CSV_OPEN]\nsource=1\nfilename=orders.csv\nencoding=2\nheaderline=1\n\n";
constexpr char kSave[] = "[A_CSV_SAVE]\nsavetofile=1\ntargetfilename=saved.csv\ntargetencoding=2\n\n";
constexpr char kEmptyTask[] = "[A_CSV_OPEN]\nsource=2\nlinecount=1\nline00000000=a\n\n";

const Job kJobs[] = {
    {"open_save", "", true},
    {"open_sort_number_save", "[A_CSV_SORT]\nsortcolumn=8\nsortmode=1\n\n", true},
    {"open_sort_text_nocase_save", "[A_CSV_SORT]\nsortcolumn=3\n\n", true},
    {"open_remove_duplicates_save", "[A_CSV_REMOVEDUPL]\nvarname=removed\n\n", true},
    // Keeps the orders whose status contains "paid" in any case (a quarter),
    // and those shipped to Berlin or München by a regular expression (a fifth).
    {"open_filter_text_save", "[A_CSV_FILTER]\nconditionscount=1\ncondition00000000=9,paid,0,0\n\n", true},
    {"open_filter_regex_save",
     "[A_CSV_FILTER]\nconditionscount=1\ncondition00000000=4,^(Berlin|M\xC3\xBCnchen)$,0,1\n\n", true},
    // Steps after a sort, which find the records in no order in memory.
    {"open_sort_dedupe_filter_save",
     "[A_CSV_SORT]\nsortcolumn=3\n\n[A_CSV_REMOVEDUPL]\nvarname=removed\n\n"
     "[A_CSV_FILTER]\nconditionscount=1\ncondition00000000=4,^(Berlin|M\xC3\xBCnchen)$,0,1\n\n",
     true},
    {"open_info", "[A_CSV_INFO]\nrecordcountvar=records\ncolcountvar=columns\n\n", false},
    // A pass per record that only sets the row number and the row's content.
    {"open_loop", "[A_CSV_LOOP]\nrowvarname=n\nlinevarname=row\n\n[end-loop]\n\n", false},
};

struct Build {
  const char* name;
  std::vector<std::string> command;  // the program and its first arguments
  std::vector<std::string> environment;
  bool qmhost = true;  // else a peer (peers.mjs), given the job's name
};

struct Result {
  double own = 0;     // median seconds of the task's steps in the process (qmhost --time)
  double wall = 0;    // median seconds
  double best = 0;    // least seconds
  double cpu = 0;     // median user and system seconds of the process tree
  double peakMb = 0;  // the most resident memory of one process, MB
  std::string hash;   // of the saved file, if the job saves
};

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double Seconds(const timeval& t) { return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6; }

struct Run {
  double wall;
  double cpu;
  double peakMb;
  double own;
};

// The sum of the step times qmhost --time printed into `output`: the task's
// own time in the process, without the process's start (and Wine's) or the
// plug-in's loading. Negative when there is none.
double StepSeconds(const fs::path& output) {
  std::ifstream in(output);
  for (std::string line; std::getline(in, line);) {
    double ms = 0;
    if (std::sscanf(line.c_str(), "time in steps %lf ms", &ms) == 1) return ms / 1000.0;
  }
  return -1;
}

// Runs `argv` in `dir` with its output (stdout and stderr) into
// `dir`/run_output.txt; the resource figures are those of the child and of
// the processes it waited for.
std::optional<Run> RunOnce(const std::vector<std::string>& argv, const std::vector<std::string>& environment,
                           const fs::path& dir) {
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);
  const auto start = Clock::now();
  const pid_t child = fork();
  if (child < 0) return std::nullopt;
  if (child == 0) {
    for (const std::string& setting : environment) putenv(const_cast<char*>(setting.c_str()));
    // Both streams to the file: a quiet qmhost writes its outcome line to
    // stderr, which would interleave with the figures.
    const int output = open((dir / "run_output.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (output < 0 || dup2(output, STDOUT_FILENO) < 0 || dup2(output, STDERR_FILENO) < 0 || chdir(dir.c_str()) != 0)
      _exit(127);
    execvp(args[0], args.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  if (wait4(child, &status, 0, &usage) != child) return std::nullopt;
  const double wall = std::chrono::duration<double>(Clock::now() - start).count();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
  return Run{wall, Seconds(usage.ru_utime) + Seconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss) / 1024.0,
             StepSeconds(dir / "run_output.txt")};
}

// FNV-1a over the file's bytes, as hex.
std::string HashFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::vector<char> buffer(1 << 20);
  uint64_t hash = 0xCBF29CE484222325ull;
  while (in) {
    in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    const auto got = static_cast<size_t>(in.gcount());
    for (size_t i = 0; i < got; ++i) hash = (hash ^ static_cast<unsigned char>(buffer[i])) * 0x100000001B3ull;
  }
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

std::optional<Result> TimeJob(const Build& build, const Job& job, const fs::path& dir, const fs::path& task, int runs) {
  std::vector<std::string> argv = build.command;
  if (build.qmhost) {
    argv.insert(argv.end(), {"--quiet", "--time", "run", task.string()});
  } else {
    argv.push_back(job.name);
  }
  std::vector<double> walls, cpus, owns;
  Result result;
  // One untimed run first: it brings the program and the file into the page
  // cache and, under Wine, starts the prefix's server for the timed runs.
  for (int run = -1; run < runs; ++run) {
    // Each run saves to a new file, as the figures are defined. Replacing
    // the file of the run before would also time the kernel finishing that
    // file's write-back when it is deleted.
    fs::remove(dir / "saved.csv");
    const std::optional<Run> once = RunOnce(argv, build.environment, dir);
    if (!once || (build.qmhost && once->own < 0)) {
      std::fprintf(stderr, "%s, %s: the task failed\n", build.name, job.name);
      return std::nullopt;
    }
    if (run < 0) continue;
    walls.push_back(once->wall);
    cpus.push_back(once->cpu);
    owns.push_back(once->own);
    result.peakMb = std::max(result.peakMb, once->peakMb);
  }
  result.wall = Median(walls);
  result.best = *std::min_element(walls.begin(), walls.end());
  result.cpu = Median(cpus);
  result.own = Median(owns);
  if (job.save) result.hash = HashFile(dir / "saved.csv");
  fs::remove(dir / "saved.csv");
  return result;
}

bool Flag(const char* arg, const char* name) { return std::strcmp(arg, name) == 0; }

// The system's share of open+save, once: the file read in 256 KiB pieces,
// `tableBytes` of fresh memory (huge pages advised, as the plug-in's large
// blocks are) written once each as the pieces come in, and the file's size
// of that memory written to a new file in 512 KiB pieces. Seconds, or
// nothing when something failed.
std::optional<double> SystemShareOnce(const fs::path& dir, size_t tableBytes) {
  const auto start = Clock::now();
  const int in = open((dir / "orders.csv").c_str(), O_RDONLY);
  if (in < 0) return std::nullopt;
  const double growth = static_cast<double>(tableBytes) / static_cast<double>(fs::file_size(dir / "orders.csv"));
  void* table = mmap(nullptr, tableBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (table == MAP_FAILED) {
    close(in);
    return std::nullopt;
  }
  madvise(table, tableBytes, MADV_HUGEPAGE);
  auto* memory = static_cast<char*>(table);
  std::vector<char> piece(size_t{1} << 18);
  size_t total = 0;
  size_t filled = 0;
  for (ssize_t got; (got = read(in, piece.data(), piece.size())) > 0;) {
    total += static_cast<size_t>(got);
    const size_t to = std::min(tableBytes, static_cast<size_t>(static_cast<double>(total) * growth));
    for (; filled < to; filled += 64) memory[filled] = static_cast<char>(filled >> 6);
  }
  close(in);
  const int out = open((dir / "system_share.csv").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  bool written = out >= 0;
  const size_t size = std::min(total, tableBytes);
  for (size_t done = 0; written && done < size; done += size_t{1} << 19) {
    const size_t count = std::min(size - done, size_t{1} << 19);
    written = write(out, memory + done, count) == static_cast<ssize_t>(count);
  }
  if (out >= 0) close(out);
  munmap(table, tableBytes);
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  fs::remove(dir / "system_share.csv");
  if (!written) return std::nullopt;
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  unsigned long long records = 1000000ull;
  int runs = 0;
  bool nativeOnly = false;
  std::string nativeHost = QMHOST_PATH;
  fs::path win64Host = QMHOST_WIN64_PATH;
  std::string wine = std::getenv("QMCSV_WINE") != nullptr ? std::getenv("QMCSV_WINE") : "wine";
  fs::path peerModules;
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc;
    if (Flag(argv[i], "--records") && hasValue) {
      records = std::strtoull(argv[++i], nullptr, 10);
    } else if (Flag(argv[i], "--runs") && hasValue) {
      runs = std::max(1, std::atoi(argv[++i]));
    } else if (Flag(argv[i], "--large")) {
      records = 10000000ull;
      if (runs == 0) runs = 3;
    } else if (Flag(argv[i], "--native-only")) {
      nativeOnly = true;
    } else if (Flag(argv[i], "--native-host") && hasValue) {
      nativeHost = argv[++i];
    } else if (Flag(argv[i], "--win64-host") && hasValue) {
      win64Host = argv[++i];
    } else if (Flag(argv[i], "--wine") && hasValue) {
      wine = argv[++i];
    } else if (Flag(argv[i], "--peers") && hasValue) {
      peerModules = fs::absolute(argv[++i]);
    } else {
      std::fprintf(stderr,
                   "usage: actions_bench [--records N] [--runs N] [--large] [--native-only] [--native-host PATH] "
                   "[--win64-host PATH] [--wine PROGRAM] [--peers FOLDER]\n");
      return 2;
    }
  }
  if (runs == 0) runs = 5;

  // The tasks run in the data's folder.
  nativeHost = fs::absolute(nativeHost).string();
  win64Host = fs::absolute(win64Host);
  std::vector<Build> builds = {{"native", {nativeHost}, {}}};
  if (!nativeOnly) {
    if (!fs::exists(win64Host)) {
      std::fprintf(stderr, "actions_bench: no %s (build the win64 preset, or pass --native-only)\n",
                   win64Host.string().c_str());
      return 2;
    }
    const fs::path prefix = win64Host.parent_path().parent_path() / "wineprefix";
    builds.push_back({"win64",
                      {wine, win64Host.string()},
                      {"WINEPREFIX=" + prefix.string(), "WINEDEBUG=-all", "WINEDLLOVERRIDES=mscoree,mshtml="}});
  }

  // The peers installed in the folder given, each run by node.
  std::vector<Build> peers;
  if (!peerModules.empty()) {
    const std::pair<const char*, const char*> known[] = {{"duckdb", "@duckdb/node-api"}, {"polars", "nodejs-polars"}};
    for (const auto& [name, package] : known) {
      if (fs::exists(peerModules / "node_modules" / package)) {
        peers.push_back({name, {"node", QMCSV_PEERS_SCRIPT, peerModules.string(), name}, {}, false});
      } else {
        std::printf("peer %s: not installed in %s\n", name, peerModules.string().c_str());
      }
    }
  }

  // A folder of this run only: two runs at once must not share files.
  const fs::path dir = fs::temp_directory_path() / ("qmcsv_actions_bench_" + std::to_string(records) + "_" +
                                                    std::to_string(Clock::now().time_since_epoch().count()));
  fs::create_directories(dir);
  const double fileMb = static_cast<double>(qm::bench::WriteOrdersFile((dir / "orders.csv").string(), records)) / 1e6;
  std::printf("records: %llu\n", records);
  std::printf("file_size: %.1f MB\n", fileMb);
  std::printf("runs: %d\n", runs);

  int failures = 0;
  // What each build's host takes to start, run one tiny step and stop.
  std::vector<Result> empty;
  {
    const Job job{"empty_task", "", false};
    const fs::path task = dir / "empty_task.qmt";
    std::ofstream(task, std::ios::binary) << kEmptyTask;
    for (const Build& build : builds) {
      const std::optional<Result> result = TimeJob(build, job, dir, task, runs);
      if (!result) return 1;
      empty.push_back(*result);
      std::printf("%s empty_task: %.3f s (peak %.0f MB)\n", build.name, result->wall, result->peakMb);
    }
  }
  for (const Job& job : kJobs) {
    const fs::path task = dir / (std::string(job.name) + ".qmt");
    {
      std::ofstream out(task, std::ios::binary);
      out << kOpen << job.steps << (job.save ? kSave : "");
    }
    std::vector<Result> results;
    for (const Build& build : builds) {
      const std::optional<Result> result = TimeJob(build, job, dir, task, runs);
      if (!result) {
        ++failures;
        break;
      }
      results.push_back(*result);
      std::printf("%s %s: %.3f s (best %.3f s, cpu %.3f s, peak %.0f MB; in process %.3f s)\n", build.name, job.name,
                  result->wall, result->best, result->cpu, result->peakMb, result->own);
      if (job.save) std::printf("%s %s_output: %s\n", build.name, job.name, result->hash.c_str());
    }
    if (results.size() == 2) {
      std::printf("ratio %s: %.2fx (without the empty task: %.2fx; in process: %.2fx)\n", job.name,
                  results[1].wall / results[0].wall,
                  (results[1].wall - empty[1].wall) / (results[0].wall - empty[0].wall),
                  results[1].own / results[0].own);
      if (job.save && results[0].hash != results[1].hash) {
        std::printf("%s: the two builds saved different files\n", job.name);
        ++failures;
      }
    }
    for (const Build& peer :
         std::strcmp(job.name, "open_loop") == 0 || results.empty() ? std::vector<Build>{} : peers) {
      const std::optional<Result> result = TimeJob(peer, job, dir, task, runs);
      if (!result) {
        ++failures;
        continue;
      }
      std::printf("%s %s: %.3f s (best %.3f s, cpu %.3f s, peak %.0f MB; %.2fx native)\n", peer.name, job.name,
                  result->wall, result->best, result->cpu, result->peakMb, result->wall / results[0].wall);
    }
    if (std::strcmp(job.name, "open_info") == 0) {
      for (size_t i = 0; i < results.size(); ++i) {
        // The process's peak, and the table's share of it: the peak over the
        // empty task's, which under Wine is Wine's own memory.
        std::printf("%s loaded_peak_to_file: %.2fx (the table alone: %.2fx)\n", builds[i].name,
                    results[i].peakMb * 1.048576 / fileMb, (results[i].peakMb - empty[i].peakMb) * 1.048576 / fileMb);
      }
      if (!results.empty()) {
        const auto tableBytes = static_cast<size_t>((results[0].peakMb - empty[0].peakMb) * 1048576.0);
        std::vector<double> shares;
        for (int run = 0; run < runs; ++run) {
          if (const std::optional<double> share = SystemShareOnce(dir, tableBytes)) shares.push_back(*share);
        }
        if (shares.size() == static_cast<size_t>(runs)) {
          std::printf("native system_share_open_save: %.3f s (a table of %.0f MB)\n", Median(shares),
                      static_cast<double>(tableBytes) / 1048576.0);
        } else {
          std::printf("system_share_open_save: failed\n");
          ++failures;
        }
      }
    }
    std::fflush(stdout);
  }

  std::error_code ignored;
  fs::remove_all(dir, ignored);
  return failures == 0 ? 0 : 1;
}
