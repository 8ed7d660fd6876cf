// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the platform's private-profile functions make of an initialisation file, over memory: each
// change gives the text that the file would hold after the platform's call, which reads and writes
// the file anew every time.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pv {

/// The rules of the platform: the first section and the first key of a name count, names compare
/// without regard to (ASCII) case. A text that is written loses its empty lines and the blanks
/// around lines, names and values; comments, other sections and the order of all stay. A text that
/// was not changed stays as it was.
///
/// Sections and keys are named without blanks around them; they are not empty.
class ProfileText {
 public:
  explicit ProfileText(std::wstring_view text);

  /// Without quotes around it. nullopt when there is no such key, or one without a value.
  std::optional<std::wstring> value(std::wstring_view section, std::wstring_view key) const;

  /// Adds what is not there: a section behind the last one, a key behind the last one of its
  /// section. The value may be any text; line ends in it begin lines of their own.
  void set(std::wstring_view section, std::wstring_view key, std::wstring_view value);

  void remove_section(std::wstring_view section);

  bool changed() const { return changed_; }

  /// The whole text; lines end with CR LF.
  std::wstring text() const;

 private:
  struct Line {
    std::wstring name;
    std::optional<std::wstring> value;  // none for a line without "=": a comment, for instance
  };
  struct Section {
    std::wstring name;  // empty for the lines before the first section
    std::vector<Line> lines;
  };
  using Sections = std::vector<Section>;
  // Sections of the file that have been read again: they stand at begin..end now.
  struct Written {
    std::size_t begin, end;
    Sections sections;
  };

  static Sections parse(std::wstring_view text);
  static void add_line(Section& section, std::wstring_view text);
  static std::wstring text_of(std::span<const Section> sections);

  std::size_t position_of(std::wstring_view section) const;
  void read_again();
  void note_change(std::size_t unread);

  Sections sections_;
  bool changed_ = false;
  std::optional<Written> written_;
  bool irregular_ = true;  // some section disappears when the text is written and read again
  // The changed section that would not read as it stands here; or none, or all.
  std::size_t unread_;
};

}  // namespace pv
