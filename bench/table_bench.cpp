// Load, save and sort figures of the CSV table on a generated orders file.
//   table_bench [records] [load]   (default 1000000 records, about 100 MB;
//                                   "load" stops after the load figures)
// Prints one line per figure with its unit.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/utf.h"
#include "generate_orders.h"
#include "platform/system_blocks.h"
#include "table/simple_csv_object.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

std::u16string WidePath(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return qm::Utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size()));
}

// A field of /proc/self/status in kB, or -1 where there is none (Windows).
long StatusKb(const char* key) {
#ifdef _WIN32
  (void)key;
  return -1;
#endif
  std::ifstream status("/proc/self/status");
  std::string line;
  const std::string prefix = std::string(key) + ":";
  while (std::getline(status, line)) {
    if (line.compare(0, prefix.size(), prefix) == 0) return std::strtol(line.c_str() + prefix.size(), nullptr, 10);
  }
  return -1;
}

// Starts a new high-water mark of the resident set (Linux 4.0 and later).
bool ResetPeak() {
#ifdef _WIN32
  return false;
#endif
  std::ofstream clear("/proc/self/clear_refs");
  clear << "5";
  clear.flush();
  return static_cast<bool>(clear);
}

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

// Processor time of this process: on a busy machine it shows what an
// operation costs apart from waiting for a core.
double CpuSeconds(std::clock_t since) { return static_cast<double>(std::clock() - since) / CLOCKS_PER_SEC; }

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void Configure(qm::TSimpleCSVDataClass& table, qm::TextEncoding encoding) {
  table.SetDelimiter(u';');
  table.SetQuoteChar(u'"');
  table.SetStrictDelimiter(true);
  table.SetHeaderLine(true);
  table.SetEncoding(encoding);
}

// Milliseconds to take 128 MiB from the system as the table's large blocks
// take it and write a byte to each 4 KiB page: what a first load pays the
// system for its memory, whatever the plug-in does (a median of three).
double FreshMemoryMs() {
  constexpr size_t kBytes = size_t{128} << 20;
  std::vector<double> times;
  for (int run = 0; run < 3; ++run) {
    const auto start = Clock::now();
    const size_t size = qm::SystemBlockSize(kBytes);
    auto* block = static_cast<volatile char*>(qm::AllocateSystemBlock(size));
    if (!block) return -1;
    for (size_t at = 0; at < size; at += 4096) block[at] = 1;
    times.push_back(Seconds(start) * 1000);
    qm::FreeSystemBlock(const_cast<char*>(block), size);
  }
  return Median(times);
}

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

int main(int argc, char** argv) {
  const unsigned long long records = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000ull;
  const int runs = records > 2000000 ? 1 : 5;
  // Names of this run only: other programs may use the same folder.
  const std::string tag = std::to_string(records) + "_" + std::to_string(Clock::now().time_since_epoch().count());
  const fs::path dir = fs::temp_directory_path();
  const fs::path input = dir / ("qmcsv_bench_orders_" + tag + ".csv");
  const fs::path output = dir / ("qmcsv_bench_saved_" + tag + ".csv");
  const fs::path utf16 = dir / ("qmcsv_bench_utf16_" + tag + ".csv");

  auto start = Clock::now();
  const double fileBytes = static_cast<double>(qm::bench::WriteOrdersFile(input.string(), records));
  const double mb = fileBytes / 1e6;
  std::printf("records: %llu\n", records);
  std::printf("file_size: %.1f MB\n", mb);
  std::printf("generate: %.2f s\n", Seconds(start));
  std::printf("fresh_memory_128mib: %.1f ms\n", FreshMemoryMs());

  qm::TSimpleCSVDataClass table;
  Configure(table, qm::TextEncoding::UTF8);

  // Load: the first run also gives the memory figures.
  std::vector<double> times, cpu;
  double tableBytes = 0;
  const long baseKb = StatusKb("VmRSS");
  const bool peakReset = ResetPeak();
  for (int run = 0; run < runs; ++run) {
    start = Clock::now();
    std::clock_t cpuStart = std::clock();
    if (!table.LoadFromCSVFile(WidePath(input))) {
      std::fprintf(stderr, "load failed: %s\n", qm::Utf16ToUtf8(table.LastError()).c_str());
      return 1;
    }
    times.push_back(Seconds(start));
    cpu.push_back(CpuSeconds(cpuStart));
    if (run == 0) {
      const long peakKb = StatusKb("VmHWM");
      const long rssKb = StatusKb("VmRSS");
      if (peakKb > 0 && baseKb > 0) {
        const double peakMb = static_cast<double>(peakKb - baseKb) * 1024.0 / 1e6;
        const double rssMb = static_cast<double>(rssKb - baseKb) * 1024.0 / 1e6;
        tableBytes = rssMb * 1e6;
        std::printf("peak_rss_after_load: %.2f x file\n", peakMb / mb);
        std::printf("peak_rss_after_load_abs: %.1f MB\n", peakMb);
        std::printf("rss_of_loaded_table: %.1f MB\n", rssMb);
        if (!peakReset) std::printf("peak_rss_note: high-water mark not reset, includes earlier use\n");
      } else {
        std::printf("peak_rss_after_load: n/a (no /proc/self/status)\n");
      }
    }
  }
  // The first load also takes its memory from the system; later ones reuse it.
  std::printf("load_utf8_first: %.1f MB/s\n", mb / times.front());
  std::printf("load_utf8: %.1f MB/s\n", mb / Median(times));
  std::printf("load_utf8_time: %.3f s\n", Median(times));
  std::printf("load_utf8_cpu: %.1f MB/s\n", mb / Median(cpu));
  std::printf("table_records: %d\n", table.RecordCount());
  if (argc > 2 && std::string(argv[2]) == "load") {
    fs::remove(input);
    return 0;
  }

  // Save.
  times.clear();
  cpu.clear();
  for (int run = 0; run < runs; ++run) {
    fs::remove(output);  // a new file each run, as in actions_bench
    start = Clock::now();
    std::clock_t cpuStart = std::clock();
    if (!table.SaveToCSVFile(WidePath(output))) {
      std::fprintf(stderr, "save failed: %s\n", qm::Utf16ToUtf8(table.LastError()).c_str());
      return 1;
    }
    times.push_back(Seconds(start));
    cpu.push_back(CpuSeconds(cpuStart));
  }
  const double savedMb = static_cast<double>(fs::file_size(output)) / 1e6;
  std::printf("save_utf8: %.1f MB/s\n", savedMb / Median(times));
  std::printf("save_utf8_time: %.3f s\n", Median(times));
  std::printf("save_utf8_cpu: %.1f MB/s\n", savedMb / Median(cpu));
  if (records <= 2000000) {
    // The saved file is the input behind a UTF-8 byte-order mark.
    const bool same = ReadAll(output) == "\xEF\xBB\xBF" + ReadAll(input);
    std::printf("roundtrip_identical: %d bool\n", same ? 1 : 0);
  }

  // UTF-16 figures.
  table.SetEncoding(qm::TextEncoding::Unicode);
  start = Clock::now();
  if (!table.SaveToCSVFile(WidePath(utf16))) {
    std::fprintf(stderr, "save failed: %s\n", qm::Utf16ToUtf8(table.LastError()).c_str());
    return 1;
  }
  const double utf16Mb = static_cast<double>(fs::file_size(utf16)) / 1e6;
  std::printf("save_utf16: %.1f MB/s\n", utf16Mb / Seconds(start));
  start = Clock::now();
  if (!table.LoadFromCSVFile(WidePath(utf16))) {
    std::fprintf(stderr, "load failed: %s\n", qm::Utf16ToUtf8(table.LastError()).c_str());
    return 1;
  }
  std::printf("load_utf16: %.1f MB/s\n", utf16Mb / Seconds(start));

  // Sorts, on the loaded table.
  struct Sort {
    const char* name;
    int32_t column;
    bool caseSensitive, descending, numeric;
  };
  const Sort sorts[] = {{"sort_numeric", 7, true, false, true},
                        {"sort_text_nocase", 2, false, false, false},
                        {"sort_text_case_desc", 2, true, true, false},
                        {"sort_text_unique_keys", 0, false, false, false}};
  for (const Sort& sort : sorts) {
    start = Clock::now();
    const std::clock_t cpuStart = std::clock();
    table.SortByField(sort.column, sort.caseSensitive, sort.descending, sort.numeric);
    std::printf("%s: %.3f s\n", sort.name, Seconds(start));
    std::printf("%s_cpu: %.3f s\n", sort.name, CpuSeconds(cpuStart));
    // Saving reads the records in their new order, spread over memory.
    fs::remove(output);
    table.SetEncoding(qm::TextEncoding::UTF8);
    start = Clock::now();
    if (!table.SaveToCSVFile(WidePath(output))) {
      std::fprintf(stderr, "save failed: %s\n", qm::Utf16ToUtf8(table.LastError()).c_str());
      return 1;
    }
    std::printf("%s_then_save: %.3f s\n", sort.name, Seconds(start));
  }

  // What taking and first touching the table's memory costs by itself, in
  // record-sized blocks: a floor under the load time on this machine.
  if (tableBytes > 0 && records > 0) {
    table.ClearData();
    const size_t block = static_cast<size_t>(tableBytes / static_cast<double>(records));
    std::vector<void*> blocks;
    blocks.reserve(records);
    start = Clock::now();
    for (unsigned long long k = 0; k < records; ++k) {
      void* p = std::malloc(block);
      if (!p) break;
      std::memset(p, 1, block);
      blocks.push_back(p);
    }
    std::printf("alloc_touch_floor: %.3f s\n", Seconds(start));
    std::printf("alloc_touch_floor_rate: %.1f MB/s of file\n", mb / Seconds(start));
    for (void* p : blocks) std::free(p);
  }

  std::error_code ignored;
  fs::remove(output, ignored);
  fs::remove(utf16, ignored);
  fs::remove(input, ignored);
  return 0;
}
