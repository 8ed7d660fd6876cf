// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The host itself: what goes wrong in a script is told, so that no test passes by silence.

#include <gtest/gtest.h>

#include "tests/script_host/script_host.h"
#include "tests/support/fake_object.h"
#include "tests/support/source_tree.h"

namespace pv::test {
namespace {

class Host : public testing::Test {
 protected:
  ScriptHost host_{[this](const std::string& error) { errors_ += error + "\n"; }};
  std::string errors_;
};

// In JScript: the platform's VBScript keeps the texts of errors that end it.
TEST_F(Host, TellsErrorsOfScriptsWithTheirLines) {
  EXPECT_THROW(host_.engine(L"JScript").run(L"var x = 1;\nnonsense();\n", 20), CallFailed);
  EXPECT_NE(errors_.find("line 22: "), errors_.npos) << errors_;
}

TEST_F(Host, TellsErrorsOfHandlers) {
  host_.engine(L"JScript").run(L"function hub_Sending() { nonsense(); }");
  const Object hub = host_.create(L"pvItems32.CTxmEvents", L"hub_");
  hub.call(L"RaiseSending");
  EXPECT_NE(errors_.find("hub_Sending"), errors_.npos) << errors_;
}

TEST_F(Host, EventsWithoutHandlersGoNowhere) {
  const Object hub = host_.create(L"pvItems32.CTxmEvents", L"hub_");
  hub.call(L"RaiseSending");
  EXPECT_EQ(errors_, "");
  EXPECT_EQ(host_.missing_events(hub).find(L"Sending "), std::wstring::npos);
  EXPECT_NE(host_.missing_events(hub).find(L"Receiving "), std::wstring::npos);
}

TEST_F(Host, ObjectsWithoutEventsAreNotConnected) {
  EXPECT_THROW(host_.create(L"pvItems32.CFile", L"file_"), CallFailed);
  EXPECT_THROW(host_.connect(Object(Ref<IDispatch>(FakeObject().get())), L"fake_"), CallFailed);
}

TEST_F(Host, ConnectionsEndWithTheHost) {
  const Object hub = Object::create(L"pvItems32.CTxmEvents");
  const ULONG before = references_of(hub.get());
  {
    ScriptHost other([](const std::string&) {});
    other.connect(hub, L"hub_");
    EXPECT_GT(references_of(hub.get()), before);
  }
  EXPECT_EQ(references_of(hub.get()), before);
}

TEST_F(Host, UnknownLanguagesAreRefused) {
  EXPECT_THROW(host_.engine(L"Nonsense.Language"), CallFailed);
}

TEST_F(Host, ReadsTheJobsOfAFile) {
  const std::vector<Job> jobs = jobs_of(source_file("tests/script_host/constants.wsf"));
  ASSERT_EQ(jobs.size(), 6u);
  const Job& job = jobs[4];
  EXPECT_EQ(job.id, "LibrariesOfOthersStandBesideIt");
  ASSERT_EQ(job.references.size(), 2u);
  EXPECT_EQ(job.references[0].attributes.at("object"), "pvItems32.CItems");
  EXPECT_EQ(job.references[1].attributes.at("version"), "2.0");
  ASSERT_EQ(job.scripts.size(), 2u);
  EXPECT_EQ(job.scripts[1].attributes.at("language"), "JScript");
  EXPECT_EQ(job.scripts[1].text, "\nCheck(edtFloat, 4);\nCheck(Gray, 2);\n");
}

}  // namespace
}  // namespace pv::test
