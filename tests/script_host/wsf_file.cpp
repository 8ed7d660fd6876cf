// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/wsf_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string_view>

namespace pv::test {
namespace {

constexpr std::string_view kCDataBegin = "<![CDATA[", kCDataEnd = "]]>";

std::map<std::string, std::string> attributes_of(const std::string& tag) {
  static const std::regex attribute("(\\w+)=\"([^\"]*)\"");
  std::map<std::string, std::string> found;
  for (auto match = std::sregex_iterator(tag.begin(), tag.end(), attribute);
       match != std::sregex_iterator(); ++match) {
    found[(*match)[1]] = (*match)[2];
  }
  return found;
}

int lines_in(std::string_view text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

std::size_t position_of(std::string_view word, std::string_view text, std::size_t from) {
  const std::size_t found = text.find(word, from);
  if (found == text.npos) throw std::runtime_error("script file: no " + std::string(word));
  return found;
}

/// What is between a script's tags, without the section that it stands in.
Element without_cdata(Element script) {
  const std::size_t begin = position_of(kCDataBegin, script.text, 0) + kCDataBegin.size();
  const std::size_t end = position_of(kCDataEnd, script.text, begin);
  script.line += lines_in(std::string_view(script.text).substr(0, begin));
  script.text = script.text.substr(begin, end - begin);
  return script;
}

/// The elements of this name; elements of one name do not contain each other. `line` is that of the
/// text's beginning.
std::vector<Element> elements_of(std::string_view text, const std::string& name, int line) {
  std::vector<Element> elements;
  const std::string opening = "<" + name + " ", closing = "</" + name + ">";
  for (std::size_t at = text.find(opening); at != text.npos; at = text.find(opening, at + 1)) {
    const std::size_t end = position_of(">", text, at);
    Element element{attributes_of(std::string(text.substr(at, end - at))), {}, line};
    if (text[end - 1] != '/') {
      element.text = text.substr(end + 1, position_of(closing, text, end) - end - 1);
      element.line += lines_in(text.substr(0, end));
    }
    elements.push_back(element);
  }
  return elements;
}

}  // namespace

std::vector<Job> jobs_of(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("no script file " + file.string());
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  std::vector<Job> jobs;
  for (const Element& element : elements_of(text, "job", 0)) {
    Job job{element.attributes.at("id"), elements_of(element.text, "reference", element.line), {}};
    for (const Element& script : elements_of(element.text, "script", element.line)) {
      job.scripts.push_back(without_cdata(script));
    }
    jobs.push_back(std::move(job));
  }
  return jobs;
}

}  // namespace pv::test
