#include "table_view.h"

#include <algorithm>

#include "core/utf.h"
#include "display_width.h"

namespace qmhost {

namespace {

// A cell as shown: control characters escaped, so each record stays one line.
std::string Shown(const std::u16string& cell) {
  std::string out;
  for (unsigned char c : qm::Utf16ToUtf8(cell)) {
    if (c == '\t') {
      out += "\\t";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\n') {
      out += "\\n";
    } else if (c < 0x20 || c == 0x7F) {
      static const char* hex = "0123456789abcdef";
      out += "\\x";
      out += hex[c >> 4];
      out += hex[c & 15];
    } else {
      out += static_cast<char>(c);
    }
  }
  return out;
}

}  // namespace

std::vector<std::string> TableView(const std::vector<std::vector<std::u16string>>& records, size_t more,
                                   size_t moreColumns) {
  std::vector<std::vector<std::string>> rows;
  if (!records.empty()) {
    rows.emplace_back(1, "#");
    for (size_t column = 1; column <= records.front().size(); ++column) rows.back().push_back(std::to_string(column));
  }
  for (size_t row = 0; row < records.size(); ++row) {
    rows.emplace_back(1, std::to_string(row + 1));
    for (const auto& cell : records[row]) rows.back().push_back(Shown(cell));
  }
  std::vector<size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size(), 0);
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], DisplayWidth(row[i]));
  }
  std::vector<std::string> lines;
  for (const auto& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      if (i > 0) line += " | ";
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - DisplayWidth(row[i]), ' ');
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    lines.push_back(line);
  }
  if (records.empty() && more == 0) lines.push_back("(no records)");
  if (more > 0) lines.push_back("... " + std::to_string(more) + " more record" + (more == 1 ? "" : "s"));
  if (moreColumns > 0) {
    lines.push_back("... " + std::to_string(moreColumns) + " more column" + (moreColumns == 1 ? "" : "s"));
  }
  return lines;
}

}  // namespace qmhost
