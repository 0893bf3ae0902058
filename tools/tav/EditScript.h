#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Why a line is not played, in words for whoever wrote it. Thrown where it shows and caught where the line
/// is played, so that an edit reads straight on.
class EditError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Words = std::vector<std::string>;

/// The words of a line of a script. They stand between blanks; one with blanks stands in double quotes, in
/// which \" is a quote, \\ a backslash and \n a line feed. "#" where a word may begin starts a comment.
/// @throws EditError on open quotes, and on bytes that graph text cannot carry
Words wordsOf(std::string_view line);

/// The word as it is typed.
std::string quoted(std::string const& word);

/// A line that is being typed, up to the cursor.
struct UnfinishedLine {
    Words words;            // in front of the last
    std::string last;       // what is there of the last word, without quotes; "" behind a blank
    std::size_t begin = 0;  // where it begins in the line, with its quote
    bool isComment = false; // the cursor is in a comment
};
UnfinishedLine unfinishedLine(std::string_view line);

} // namespace tool
