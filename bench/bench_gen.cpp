// bench_gen <path> <records>: writes the generated orders file.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "generate_orders.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: bench_gen <path> <records>\n");
    return 2;
  }
  try {
    const unsigned long long records = std::strtoull(argv[2], nullptr, 10);
    const auto bytes = qm::bench::WriteOrdersFile(argv[1], records);
    std::printf("records: %llu\nbytes: %llu\n", records, static_cast<unsigned long long>(bytes));
  } catch (const std::exception& e) {
    std::fprintf(stderr, "bench_gen: %s\n", e.what());
    return 1;
  }
  return 0;
}
