#pragma once

#include <cstddef>
#include <string_view>

namespace kxbench::documents {

/// Where the node itself begins whose anchor, tag or text is at `at`: past anchors, tags, blanks, line breaks
/// and comments.
std::size_t YamlContentAt(std::string_view text, std::size_t at);

/// Whether the text at `at` begins with a quote that is not closed before `end`. False where there is none.
bool IsYamlQuoteOpen(std::string_view text, std::size_t at, std::size_t end);

/// The unquoted word at the front of a text that the parser takes for nothing: null, Null, NULL or ~. Empty
/// for any other.
std::string_view YamlNullAt(std::string_view text, std::size_t at);

/// The dash of a list's item that is empty, before `at`, where the parser noticed that. npos where there is
/// none.
std::size_t YamlDashBefore(std::string_view text, std::size_t at);

}  // namespace kxbench::documents
