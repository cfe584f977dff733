#pragma once

#include <filesystem>

namespace tessaro::content {

/// Writes the pages of `content`/documents (a folder a page, a file a language) into `target`, each in the frame that
/// page.htm gives and, with several sections, under a list of them. In their texts {KEY} stands for the caption of
/// strings.csv in the page's language, {{Ctrl+O}} for keys by the names that the menus have. Every other file is
/// copied. Throws, naming the page, for a caption or key that does not exist.
void BuildPages(const std::filesystem::path& content, const std::filesystem::path& target);

} // namespace tessaro::content
