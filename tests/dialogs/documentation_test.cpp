// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What docs/dialogs.md says about windows and control ids is true.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "tests/dialogs/driver/dialog_state.h"
#include "tests/dialogs/driver/every_form.h"
#include "tests/support/source_tree.h"

namespace pv::dialogs_test {
namespace {

using Controls = std::set<std::pair<int, std::string>>;  // id and window class

std::string narrow(const std::wstring& ascii) { return {ascii.begin(), ascii.end()}; }

// A section for each form, with one row for each control: id, name, window class, meaning.
std::map<std::string, Controls> documented() {
  std::ifstream page(test::source_file("docs/dialogs.md"));
  EXPECT_TRUE(page.is_open());
  std::map<std::string, Controls> forms;
  std::string form;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("## frm")) std::istringstream(line.substr(3)) >> form;
    std::istringstream cells(line);
    char bar = 0;
    int id = 0;
    std::string name, window_class;
    const bool is_row = cells >> bar >> id >> bar && bar == '|' && std::getline(cells, name, '|') &&
                        cells >> window_class;
    if (is_row) forms[form].insert({id, window_class});
  }
  return forms;
}

TEST(DialogDocumentation, NamesEveryControlOfEveryForm) {
  const std::map<std::string, Controls> forms = documented();
  const Utility utility;
  std::set<std::string> seen;
  for (const FormKind& kind : every_form()) {
    const std::string form = narrow(kind.form);
    seen.insert(form);
    ASSERT_TRUE(forms.contains(form)) << form;
    kind.show(utility, [&](const Dialog& dialog) {
      Controls found;
      for (const int id : control_ids(dialog))
        found.insert({id, narrow(class_of(dialog.control(id)))});
      EXPECT_EQ(found, forms.at(form)) << kind.name;
      EXPECT_EQ(found.size(), control_ids(dialog).size()) << "an id occurs twice";
    });
  }
  EXPECT_EQ(seen.size(), forms.size()) << "a form is documented that is not there";
}

}  // namespace
}  // namespace pv::dialogs_test
