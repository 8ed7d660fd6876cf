// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Scripts as users write them: each job of each .wsf file is a test.

#include <gtest/gtest.h>

#include <thread>

#include "tests/script_host/checks.h"
#include "tests/support/source_tree.h"

namespace pv::test {
namespace {

struct FileJob {
  std::string file;
  Job job;
};

void PrintTo(const FileJob& job, std::ostream* out) { *out << job.file << ".wsf " << job.job.id; }

std::vector<FileJob> all_jobs() {
  std::vector<FileJob> jobs;
  for (const auto& entry : std::filesystem::directory_iterator(source_file("tests/script_host"))) {
    if (entry.path().extension() != ".wsf") continue;
    for (Job& job : jobs_of(entry.path())) {
      jobs.push_back({entry.path().stem().string(), std::move(job)});
    }
  }
  return jobs;
}

class Scripts : public testing::TestWithParam<FileJob> {};

// The thread's end puts the state of the library back, such as the active language.
TEST_P(Scripts, Run) {
  std::jthread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    try {
      int checks = 0;
      ScriptHost host(
          [](const std::string& error) { ADD_FAILURE() << GetParam().file << ".wsf " << error; });
      host.add(checks_of(host, checks));
      host.run(GetParam().job);
      EXPECT_GT(checks, 0) << "the script checks nothing";
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
    SetErrorInfo(0, nullptr);
    CoUninitialize();
  });
}

INSTANTIATE_TEST_SUITE_P(All, Scripts, testing::ValuesIn(all_jobs()),
                         [](const auto& job) { return job.param.file + "_" + job.param.job.id; });

}  // namespace
}  // namespace pv::test
