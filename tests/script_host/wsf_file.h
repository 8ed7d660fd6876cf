// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace pv::test {

/// An element of a script file: its attributes and the text between its tags.
struct Element {
  std::map<std::string, std::string> attributes;
  std::string text;
  int line = 0;  // of its text, counted from 0
};

/// A job of a .wsf file: the type libraries that it refers to and its scripts, in their order.
struct Job {
  std::string id;
  std::vector<Element> references, scripts;
};

/// Reads the jobs of a script file. It is ASCII, and its scripts stand in CDATA sections.
std::vector<Job> jobs_of(const std::filesystem::path& file);

}  // namespace pv::test
