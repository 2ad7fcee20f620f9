// Every fixed message text of the plug-in, spelled once.
#pragma once

#include <string_view>

namespace qm::msg {

// Runtime errors (their texts follow the host platform's runtime library).
inline constexpr std::u16string_view kListIndexOutOfBounds = u"List index out of bounds (%d)";
inline constexpr std::u16string_view kInvalidInteger = u"'%s' is not a valid integer value";
inline constexpr std::u16string_view kCannotOpenFile = u"Cannot open file \"%s\". %s";
inline constexpr std::u16string_view kCannotCreateFile = u"Cannot create file \"%s\". %s";
// Reasons of the common file failures, worded alike in both builds.
inline constexpr std::u16string_view kFileNotFound = u"The system cannot find the file specified";
inline constexpr std::u16string_view kPathNotFound = u"The system cannot find the path specified";
inline constexpr std::u16string_view kAccessDenied = u"Access is denied";
inline constexpr std::u16string_view kUnknownError = u"Unknown error";
// A pattern that does not compile: the regular-expression library's own
// message, then the position (in code units) where it gave up.
inline constexpr std::u16string_view kRegexErrorAtOffset = u"%s at offset %d";
// An error code the library has no text for.
inline constexpr std::u16string_view kRegexUnknownError = u"Regular expression error %d";
// A pattern that cannot be searched in a cell within its bounds (the cell's
// work, depth, memory): the condition's column (from 1), its pattern, the row
// (from 1, the header line not counted), the library's message.
inline constexpr std::u16string_view kRegexConditionFailed =
    u"Condition on column %d with regular expression \"%s\" failed on row %d: %s";

// Table and action messages.
inline constexpr std::u16string_view kTextEmpty = u"Text is empty or contains no data";
inline constexpr std::u16string_view kCanNotCreateFolder = u"Can not create folder";
inline constexpr std::u16string_view kDataNotDefined =
    u"CSV data is not defined. First you must read the CSV data from a file or from text.";
inline constexpr std::u16string_view kSourceNotDefined = u"CSV source is not defined";
inline constexpr std::u16string_view kRowOutOfRange = u"Row number is out of range";
inline constexpr std::u16string_view kColumnOutOfRange = u"Column number is out of range";
inline constexpr std::u16string_view kListEmpty = u"List is empty";
inline constexpr std::u16string_view kValueEmpty = u"Value is empty";
inline constexpr std::u16string_view kColumnCountDiffers = u"The number of columns is different";
inline constexpr std::u16string_view kFormatLosesData =
    u"The table cannot be saved in this format: the delimiter or the quote character is empty or a line break, "
    u"or a cell holds the delimiter with no quote character to protect it";

// Plug-in frame.
inline constexpr std::u16string_view kOnlyOnePlugin = u"Project can have only one component TAFPlugin";
inline constexpr std::u16string_view kNotActionParams = u"This is NOT action parameters";
inline constexpr std::u16string_view kNotEventParams = u"This is NOT triggering event parameters";
inline constexpr std::u16string_view kNoTaskBridge = u"Interface not supported";
inline constexpr std::u16string_view kAboutAddon = u"Plugin version %s";

}  // namespace qm::msg
