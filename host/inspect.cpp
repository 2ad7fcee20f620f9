#include "inspect.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "core/action_catalogue.h"
#include "core/step_keys.h"
#include "core/utf.h"
#include "file_bytes.h"
#include "transcript.h"
#include "utf8_text.h"

namespace qmhost {

namespace {

namespace keys = qm::keys;

// KEY=VALUE, as a step holds it, with the key's declared name.
std::string Assign(const keys::StepKey& key, const std::string& value) { return std::string(key.name8) + "=" + value; }

// Enough lines to judge a file by, read in an instant however large it is.
constexpr size_t kSampleBytes = 1 << 20;
// Lines looked at for the delimiter, the header and the numbers.
constexpr size_t kSampleLines = 1000;

struct Encoding {
  int index = 2;           // the Open Data key's value
  std::string what;        // in words
  size_t mark = 0;         // bytes of the byte-order mark
  bool bigEndian = false;  // UTF-16 BE: no encoding of the plug-in reads it
  bool utf16 = false;
};

// Zero bytes mostly at odd offsets: UTF-16 LE text of mostly Latin letters;
// at even offsets: UTF-16 BE.
int Utf16Guess(const std::string& bytes) {
  size_t even = 0;
  size_t odd = 0;
  const size_t n = std::min<size_t>(bytes.size(), 4096) & ~size_t{1};
  for (size_t i = 0; i < n; ++i) {
    if (bytes[i] == '\0') ++(i % 2 ? odd : even);
  }
  if (odd > n / 8 && even * 4 < odd) return 1;
  if (even > n / 8 && odd * 4 < even) return -1;
  return 0;
}

Encoding FindEncoding(const std::string& bytes, bool cut) {
  Encoding e;
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) {
    e = {2, "UTF-8 with a byte-order mark", 3};
  } else if (bytes.compare(0, 2, "\xFF\xFE") == 0) {
    e = {3, "UTF-16 LE with a byte-order mark", 2, false, true};
  } else if (bytes.compare(0, 2, "\xFE\xFF") == 0) {
    e = {3, "UTF-16 BE with a byte-order mark", 2, true, true};
  } else if (const int guess = Utf16Guess(bytes); guess != 0) {
    e = {3, guess > 0 ? "UTF-16 LE without a byte-order mark" : "UTF-16 BE without a byte-order mark", 0, guess < 0,
         true};
  } else if (FirstInvalidUtf8(bytes, cut) == std::string::npos) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
    e = {2, ascii ? "ASCII (UTF-8 reads it)" : "UTF-8 without a byte-order mark", 0};
  } else {
    e = {5, "not UTF-8: the ANSI code page (Windows-1252 on a Western system)", 0};
  }
  return e;
}

std::u16string Decode(const std::string& bytes, const Encoding& e) {
  const std::string_view body = std::string_view(bytes).substr(e.mark);
  std::u16string text;
  if (e.utf16) {
    for (size_t i = 0; i + 1 < body.size(); i += 2) {
      const auto a = static_cast<unsigned char>(body[i]);
      const auto b = static_cast<unsigned char>(body[i + 1]);
      text += static_cast<char16_t>(e.bigEndian ? (a << 8 | b) : (b << 8 | a));
    }
  } else if (e.index == 2) {
    text = qm::Utf8ToUtf16(body);
  } else {
    // Only the structure matters here: each byte one character.
    for (const char c : body) text += static_cast<char16_t>(static_cast<unsigned char>(c));
  }
  return text;
}

struct Lines {
  std::vector<std::u16string> lines;
  size_t crlf = 0, lf = 0, cr = 0;
};

// The text cut into lines as the plug-in cuts it: at CR LF, CR or LF; a
// character 0 ends the text.
Lines CutLines(const std::u16string& text, bool dropLast) {
  Lines out;
  std::u16string line;
  size_t i = 0;
  bool ended = true;
  for (; i < text.size() && text[i] != 0; ++i) {
    const char16_t c = text[i];
    if (c != u'\r' && c != u'\n') {
      line += c;
      ended = false;
      continue;
    }
    if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
      ++out.crlf;
      ++i;
    } else {
      ++(c == u'\r' ? out.cr : out.lf);
    }
    out.lines.push_back(std::move(line));
    line.clear();
    ended = true;
  }
  if (!ended) out.lines.push_back(std::move(line));
  // A file read only in part ends in the middle of a line.
  if (dropLast && !out.lines.empty()) out.lines.pop_back();
  return out;
}

bool Blank(const std::u16string& line) {
  return std::all_of(line.begin(), line.end(), [](char16_t c) { return c <= u' '; });
}

// A line's cells as the plug-in splits them in strict mode; `open` is set
// when a quoted cell is still open at the end of the line.
std::vector<std::u16string> Cells(const std::u16string& line, char16_t delimiter, char16_t quote, bool* open) {
  std::vector<std::u16string> cells;
  size_t i = 0;
  if (open) *open = false;
  while (i < line.size()) {
    std::u16string cell;
    if (quote != 0 && line[i] == quote) {
      ++i;
      bool closed = false;
      while (i < line.size()) {
        if (line[i] == quote && i + 1 < line.size() && line[i + 1] == quote) {
          cell += quote;
          i += 2;
        } else if (line[i] == quote) {
          ++i;
          closed = true;
          break;
        } else {
          cell += line[i++];
        }
      }
      if (!closed && open) *open = true;
    } else {
      while (i < line.size() && line[i] != delimiter) cell += line[i++];
    }
    cells.push_back(std::move(cell));
    if (i < line.size() && line[i] == delimiter) {
      if (i + 1 == line.size()) cells.emplace_back();
      ++i;
    }
  }
  return cells;
}

struct Delimiter {
  char16_t c;
  const char* shown;
  int index;  // the key's choice; 4 with otherchar
};

const Delimiter kDelimiters[] = {
    {u';', "\";\" (semicolon)", 2},    {u',', "\",\" (comma)", 0}, {u'\t', "tab", 3},
    {u'|', "\"|\" (vertical bar)", 4}, {u':', "\":\" (colon)", 1},
};

// The records the lines make when a quoted cell that is still open at the
// end of a line goes on in the next one, as CSV means it; `joined` counts
// the records that took more than one line.
struct Records {
  std::vector<std::vector<std::u16string>> rows;
  std::vector<size_t> lineOf;  // each record's first line, from 1
  size_t joined = 0;
  size_t firstJoined = 0;  // the first line of the first such record
};

// The text lines that are not blank, with their line numbers in the file.
struct Sample {
  std::vector<const std::u16string*> lines;
  std::vector<size_t> numbers;
};

Records ReadRecords(const Sample& sample, char16_t delimiter, char16_t quote, size_t limit = SIZE_MAX) {
  const auto& lines = sample.lines;
  Records out;
  for (size_t i = 0; i < lines.size() && out.rows.size() < limit; ++i) {
    std::u16string record = *lines[i];
    const size_t first = i;
    bool open = false;
    Cells(record, delimiter, quote, &open);
    while (open && i + 1 < lines.size()) {
      record += u"\n" + *lines[++i];
      Cells(record, delimiter, quote, &open);
    }
    if (i > first && out.joined++ == 0) out.firstJoined = sample.numbers[first];
    out.rows.push_back(Cells(record, delimiter, quote, nullptr));
    out.lineOf.push_back(sample.numbers[first]);
  }
  return out;
}

struct Fit {
  size_t cells = 0;     // the cell count most records have
  size_t matching = 0;  // records with that count
  bool Better(const Fit& other) const {
    return matching > other.matching || (matching == other.matching && cells > other.cells);
  }
};

Fit Score(const Records& records) {
  std::map<size_t, size_t> counts;
  for (const auto& row : records.rows) ++counts[row.size()];
  Fit best;
  for (const auto& [cells, n] : counts) {
    if (Fit{cells, n}.Better(best)) best = {cells, n};
  }
  return best;
}

bool IsNumber(std::u16string_view cell) {
  size_t i = cell.size() > 0 && (cell[0] == u'-' || cell[0] == u'+') ? 1 : 0;
  bool digits = false;
  bool point = false;
  for (; i < cell.size(); ++i) {
    if (cell[i] >= u'0' && cell[i] <= u'9') {
      digits = true;
    } else if (cell[i] == u'.' && !point) {
      point = true;
    } else {
      return false;
    }
  }
  return digits;
}

// A number a sort as numbers reads as 0: a decimal comma ("3,50",
// "1.234,56") or thousands separators ("1,250.00").
bool IsLocalNumber(std::u16string_view cell) {
  if (cell.size() >= 40) return false;
  // The runs of digits, each with the separator before it (0 for the first).
  std::vector<std::pair<char16_t, size_t>> runs;
  size_t i = cell.empty() || (cell[0] != u'+' && cell[0] != u'-') ? 0 : 1;
  char16_t separator = 0;
  for (;;) {
    const size_t from = i;
    while (i < cell.size() && cell[i] >= u'0' && cell[i] <= u'9') ++i;
    if (i == from) return false;
    runs.emplace_back(separator, i - from);
    if (i == cell.size()) break;
    if (cell[i] != u'.' && cell[i] != u',') return false;
    separator = cell[i++];
  }
  if (runs.size() < 2) return false;
  // Runs [1, end) are groups of three after this separator, behind one to three digits.
  const auto grouped = [&](size_t end, char16_t by) {
    if (runs[0].second > 3) return false;
    for (size_t k = 1; k < end; ++k)
      if (runs[k].first != by || runs[k].second != 3) return false;
    return true;
  };
  const size_t last = runs.size() - 1;
  if (runs[last].first == u',') return last == 1 || grouped(last, u'.') || grouped(runs.size(), u',');
  return last >= 2 && grouped(last, u',');
}

}  // namespace

int Inspect(const std::string& path) {
  std::string bytes;
  std::string reason;
  if (!ReadFileBytes(path, bytes, reason, kSampleBytes + 1)) {
    PrintError("qmhost: " + path + ": cannot inspect the file: " + reason);
    return 2;
  }
  const bool cut = bytes.size() > kSampleBytes;
  if (cut) bytes.resize(kSampleBytes);
  Print("file: " + path + (cut ? " (its first 1 MiB read)" : " (" + std::to_string(bytes.size()) + " bytes)"));
  const Encoding encoding = FindEncoding(bytes, cut);
  const Lines cutLines = CutLines(Decode(bytes, encoding), cut);
  Sample sample;
  for (size_t i = 0; i < cutLines.lines.size(); ++i) {
    if (Blank(cutLines.lines[i])) continue;
    sample.lines.push_back(&cutLines.lines[i]);
    sample.numbers.push_back(i + 1);
  }
  const auto& lines = sample.lines;
  if (lines.empty()) {
    Print("no data: every line is blank; Open Data fails with \"Text is empty or contains no data\"");
    return 0;
  }
  std::vector<std::string> warnings;
  Print("encoding: " + encoding.what + " -> " + Assign(keys::kEncoding, std::to_string(encoding.index)));
  if (encoding.bigEndian) {
    warnings.push_back(
        "UTF-16 BE: no encoding of the plug-in reads it (3 is UTF-16 LE); save the file as UTF-16 LE "
        "or UTF-8 first (iconv -f UTF-16BE -t UTF-8), then use " +
        Assign(keys::kEncoding, "3") + " or " + Assign(keys::kEncoding, "2"));
  }
  if (encoding.mark == 3) {
    warnings.push_back(
        "a byte-order mark: read with encoding 0 or 5 it stays in the first cell as the characters "
        "\"\xC3\xAF\xC2\xBB\xC2\xBF\"; " +
        Assign(keys::kEncoding, "2") + " skips it");
  }

  // The delimiter and the quote character: the pair that gives most
  // records the same number of cells, more than one.
  const Delimiter* delimiter = nullptr;
  char16_t quote = u'"';
  Fit fit;
  Records records;
  for (const Delimiter& candidate : kDelimiters) {
    for (const char16_t q : {u'"', u'\''}) {
      Records r = ReadRecords(sample, candidate.c, q, kSampleLines);
      const Fit f = Score(r);
      if (f.cells < 2 || (delimiter && !f.Better(fit))) continue;
      delimiter = &candidate;
      quote = q;
      fit = f;
      records = std::move(r);
    }
  }
  if (!delimiter) {
    records = ReadRecords(sample, u';', quote, kSampleLines);
    Print("delimiter: none of ; , tab | : splits the lines: each line is one cell -> " + Assign(keys::kDelimiter, "2"));
  } else {
    Print(std::string("delimiter: ") + delimiter->shown + ", " + std::to_string(fit.cells) + " cells in " +
          std::to_string(fit.matching) + " of " + std::to_string(records.rows.size()) + " records -> " +
          Assign(keys::kDelimiter, std::to_string(delimiter->index)) +
          (delimiter->index == 4 ? " " + Assign(keys::kOtherChar, qm::Utf16ToUtf8(std::u16string(1, delimiter->c)))
                                 : ""));
  }
  const char16_t d = delimiter ? delimiter->c : u';';
  const bool quoted =
      std::any_of(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(lines.size(), kSampleLines)),
                  [&](const std::u16string* line) {
                    for (const auto& cell : Cells(*line, d, 0, nullptr)) {
                      if (!cell.empty() && cell[0] == quote) return true;
                    }
                    return false;
                  });
  const bool single = quote == u'\'';
  Print(std::string("quote character: ") +
        (single   ? "' (single quote) -> "
         : quoted ? "\" (double quote) -> "
                  : "none used; \" (double quote) -> ") +
        Assign(keys::kQuoteChar, single ? "1" : "0"));
  const auto& rows = records.rows;

  // A header: the first line's cells are all text, not numbers and not
  // empty, and differ from the cells below them in kind or in value.
  const auto& first = rows.front();
  bool header = rows.size() > 1 && std::none_of(first.begin(), first.end(), [](const std::u16string& c) {
                  return c.empty() || IsNumber(c) || IsLocalNumber(c);
                });
  if (header) {
    bool numericBelow = false;
    bool repeated = false;
    for (size_t column = 0; column < first.size(); ++column) {
      size_t numbers = 0;
      size_t present = 0;
      for (size_t r = 1; r < rows.size(); ++r) {
        if (column >= rows[r].size()) continue;
        ++present;
        if (IsNumber(rows[r][column]) || IsLocalNumber(rows[r][column])) ++numbers;
        if (rows[r][column] == first[column]) repeated = true;
      }
      if (present > 0 && numbers * 5 >= present * 4) numericBelow = true;
    }
    header = numericBelow || !repeated;
  }
  std::string names;
  for (const auto& cell : first) names += (names.empty() ? "" : ", ") + qm::Utf16ToUtf8(cell);
  Print((header ? "header: the first line holds field names (" + names + ") -> "
                : std::string("header: the first line is data -> ")) +
        Assign(keys::kHeaderLine, header ? "1" : "0"));

  std::vector<std::string> ends;
  if (cutLines.crlf) ends.push_back("CR LF");
  if (cutLines.lf) ends.push_back("LF");
  if (cutLines.cr) ends.push_back("CR");
  std::string endsText;
  for (const auto& e : ends) endsText += (endsText.empty() ? "" : " and ") + e;
  Print("line ends: " + (endsText.empty() ? std::string("none (one line)") : endsText) +
        (ends.size() > 1 ? " (mixed; each one ends a line)" : ""));

  // Line breaks in cells and ragged rows, in every line read.
  const Records all = ReadRecords(sample, d, quote);
  if (all.joined > 0) {
    warnings.push_back(std::to_string(all.joined) + " quoted cell" + (all.joined == 1 ? " holds" : "s hold") +
                       " line breaks (the first in line " + std::to_string(all.firstJoined) +
                       "): the plug-in reads each line as a record of its own");
  }
  for (size_t column = 0; column < first.size(); ++column) {
    for (size_t r = header ? 1 : 0; r < rows.size(); ++r) {
      if (column < rows[r].size() && IsLocalNumber(rows[r][column])) {
        warnings.push_back("column " + std::to_string(column + 1) + " holds numbers like \"" +
                           qm::Utf16ToUtf8(rows[r][column]) +
                           "\" (a decimal comma or thousands separators): a sort as numbers (" +
                           Assign(keys::kSortMode, "1") + ") counts them as 0");
        break;
      }
    }
  }
  size_t ragged = 0;
  size_t raggedAt = 0;
  for (size_t r = 1; r < all.rows.size(); ++r) {
    if (all.rows[r].size() != first.size() && ragged++ == 0) raggedAt = r;
  }
  if (ragged > 0) {
    warnings.push_back(std::to_string(ragged) + " line" + (ragged == 1 ? " has" : "s have") +
                       " more or fewer cells than the first (line " + std::to_string(all.lineOf[raggedAt]) + ": " +
                       std::to_string(all.rows[raggedAt].size()) + ", the first: " + std::to_string(first.size()) +
                       "): shorter records get empty cells, longer ones keep their extra cells beyond the last field");
  }
  for (const auto& warning : warnings) Print("warning: " + warning);

  Print("");
  if (encoding.bigEndian) Print("## for the file saved as UTF-16 LE (iconv -f UTF-16BE -t UTF-16LE)");
  Print("[" + std::string(qm::kCatalogue[qm::CatalogueIndex(qm::Action::OpenData)].id8) + "]");
  Print(Assign(keys::kSource, "1"));
  Print(Assign(keys::kFileName, path));
  Print(Assign(keys::kEncoding, std::to_string(encoding.index)));
  Print(Assign(keys::kDelimiter, std::to_string(delimiter ? delimiter->index : 2)));
  if (delimiter && delimiter->index == 4) {
    Print(Assign(keys::kOtherChar, qm::Utf16ToUtf8(std::u16string(1, delimiter->c))));
  }
  Print(Assign(keys::kQuoteChar, single ? "1" : "0"));
  Print(Assign(keys::kHeaderLine, header ? "1" : "0"));
  return 0;
}

}  // namespace qmhost
