// Splitting UTF-8 lines into cells straight from their bytes, as decoding
// them and then SplitLineInto would: how the reader splits a UTF-8 file in a
// strict format, without decoding it first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/delimited_text.h"
#include "core/simd_split.h"
#include "table/line_splitter.h"

namespace qm {

// Splits the lines of one text, in order. It keeps what it last saw of 64
// bytes of the text, where the next line mostly starts, and whether the last
// lines held characters from U+0100 on.
class Utf8LineSplitter {
 public:
  // Whether lines in `format` can be split so: strict, with a delimiter and
  // quote character (or none) below 0x80 that are no line break.
  static bool Handles(const TextFormat& format);

  // Lines are split only in a format it handles.
  explicit Utf8LineSplitter(const TextFormat& format);

  // Forgets what it saw of the text: call whenever the text moves or changes.
  void Restart() noexcept { look_ = {}; }

  struct Cut {
    size_t count;      // the line's cells
    const char* stop;  // where the line ended: at CR, LF, a byte 0 or the text's end
  };
  // Splits the line that starts at `line` into `cells`, with room for at
  // least `minCells` cell ends. The line ends at CR, LF, a byte 0 or `end`.
  // With `dropRead` the pages of the line's bytes already split are given
  // back on the way, so a line of hundreds of megabytes and its cells never
  // sit in memory whole side by side; those bytes are undefined afterwards.
  Cut Split(const char* line, const char* end, size_t minCells, bool dropRead, LineSplitter& cells);

 private:
  // The cells of the line at `line` into `text` (UTF-16 units or one byte a
  // character) and their ends into `ends`. Sets stop_ and oneByte_.
  template <typename Unit>
  size_t SplitInto(const char* line, const char* end, Unit* text, uint32_t* ends, bool dropRead);

  // What the split last saw of 64 bytes of text, kept for the next line.
  struct LookAhead {
    const char* base = nullptr;
    simd::PieceMasks masks;
  };

  simd::PieceMasker masker_;
  uint8_t delimiter_;
  uint8_t quote_;
  LookAhead look_;
  int wideRun_ = 0;  // lines in a row with a character from U+0100 on
  const char* stop_ = nullptr;
  bool oneByte_ = false;  // every character of the last split lies below U+0100
};

}  // namespace qm
