// A deterministic table of orders for benchmarks: a header line and ten
// columns per record, UTF-8, ";" between cells, CR LF after each line. Some
// names are non-ASCII and some notes are quoted because they hold the
// delimiter and doubled quote characters. The same record count always gives
// the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qm::bench {

// Appends record lines [first, first + count) to `out`; record 0 is preceded
// by the header line.
void AppendOrders(uint64_t first, size_t count, std::string& out);

// Writes a file of `records` records; returns its size in bytes.
uint64_t WriteOrdersFile(const std::string& path, uint64_t records);

}  // namespace qm::bench
