// The value of a header field in readable form: unfolding, encoded words, MIME parameters.
//
// Encoded words follow RFC 2047, parameters RFC 2045 and RFC 2231, read with what mail really
// sends in mind: words inside quoted strings, characters cut over several words, bytes with the
// high bit set and no word at all. Nothing is an error; what cannot be read stays as it is
// written. All results are UTF-8. Every function takes time in proportion to its input.

#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tlvn {

// The value with its folds undone and white space at both ends taken away: a line end is
// dropped, the white space that starts the next line becomes one blank.
std::string UnfoldValue(std::string_view value);

// The unfolded value with its encoded words decoded. Words that touch, or have only white
// space between them, are joined; of one charset, they are joined as bytes. A word of unknown
// charset is decoded when its bytes show their code, else it stays as written.
std::string DecodeHeaderValue(std::string_view value);

// A structured value such as that of Content-Type: a main value and its parameters.
class ParameterList {
public:
    explicit ParameterList(std::string_view value);

    // The part before the first ";", in lower case, without comments.
    const std::string& GetMain() const { return m_main; }

    // The parameter as it is written, without quotes, or empty. `name` is in lower case.
    std::string_view Find(std::string_view name) const;

    // The parameter as text: of the forms name*0..., name* and name, the first that is there.
    std::string GetText(std::string_view name) const;

private:
    bool FindExtended(std::string_view name, std::string& text) const;

    std::string m_main;
    std::vector<std::pair<std::string, std::string>> m_parameters; // sorted by name (lower case)
};

} // namespace tlvn
