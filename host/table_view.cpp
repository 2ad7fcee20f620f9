#include "table_view.h"

#include <algorithm>

#include "core/utf.h"

namespace qmhost {

namespace {

// One record's cells from tab-delimited CSV text with double quotes; `at`
// moves past the record's line end (a quoted cell may hold line breaks).
std::vector<std::u16string> NextRecord(const std::u16string& csv, size_t& at) {
  std::vector<std::u16string> cells(1);
  bool quoted = false;
  while (at < csv.size()) {
    const char16_t c = csv[at++];
    if (quoted) {
      if (c == u'"' && at < csv.size() && csv[at] == u'"') {
        cells.back() += u'"';
        ++at;
      } else if (c == u'"') {
        quoted = false;
      } else {
        cells.back() += c;
      }
    } else if (c == u'"') {
      quoted = true;
    } else if (c == u'\t') {
      cells.emplace_back();
    } else if (c == u'\r' || c == u'\n') {
      if (c == u'\r' && at < csv.size() && csv[at] == u'\n') ++at;
      break;
    } else {
      cells.back() += c;
    }
  }
  return cells;
}

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

// Characters, not bytes: columns line up with non-ASCII letters.
size_t Width(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

}  // namespace

std::vector<std::string> TableView(const std::u16string& csv, size_t limit) {
  std::vector<std::vector<std::string>> rows;
  size_t more = 0;
  for (size_t at = 0; at < csv.size();) {
    const auto cells = NextRecord(csv, at);
    if (rows.size() >= limit) {
      ++more;
      continue;
    }
    std::vector<std::string> shown;
    for (const auto& cell : cells) shown.push_back(Shown(cell));
    rows.push_back(std::move(shown));
  }
  std::vector<size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size(), 0);
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
  }
  std::vector<std::string> lines;
  for (const auto& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      if (i > 0) line += " | ";
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - Width(row[i]), ' ');
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    lines.push_back(line);
  }
  if (more > 0) lines.push_back("... " + std::to_string(more) + " more line" + (more == 1 ? "" : "s"));
  return lines;
}

}  // namespace qmhost
