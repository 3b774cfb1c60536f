#include "ui/progress.h"

#include <gtest/gtest.h>

#include "headless/computer.h"
#include "headless/desktop.h"
#include "support/error_of.h"

namespace {

struct ProgressWindow : testing::Test {
  headless::Desktop desktop;
  headless::BuiltInProgram program{{1, 2, 3}};
};

TEST_F(ProgressWindow, CanBeClosedByTheUserOnlyAfterTheOperation) {
  using enum ui::CloseReason;
  const std::tuple<bool, ui::CloseReason, bool> cases[] = {
      {true, User, false}, {true, Code, true}, {true, SystemShutdown, true}, {false, User, true}};
  for (const auto& [runs, reason, closes] : cases) {
    ui::fProgress window(desktop, program, "Plug-in");
    window.operation_runs = runs;
    window.Show();
    EXPECT_EQ(window.CloseRequested(reason), closes);
  }
}

TEST_F(ProgressWindow, AnimationReportsWhyItCannotPlay) {
  const std::tuple<std::int32_t, const char*, const char*, const char*> cases[] = {
      {201, "", "", "0 "},
      {0, "", "", "0 "},
      {202, "", "", "45002 Failed to open the AVI from the resource 202"},
      {0, "", "none.avi", "45002 Failed to open the file 'none.avi'"},
      {201, "missing.dll", "", "45003 Failed to load the resource library 'missing.dll'"}};
  const auto error_of = [](ui::cAnimControl& clip) {
    const platform::Error error = ErrorOf([&] { clip.StartPlay(); });
    return std::to_string(error.number()) + ' ' + error.what();
  };
  for (const auto& [resource, library, file, error] : cases) {
    ui::fProgress owner(desktop, program, "Plug-in");
    ui::cAnimControl clip(desktop, "Program");
    clip.ResourceId = resource;
    clip.ResourceFileName = library;
    clip.Filename = file;
    clip.SetOwner(owner);
    EXPECT_EQ(error_of(clip), "45001 Could not create Animation Control.");
    owner.Load();
    clip.SetOwner(owner);
    clip.SetOwner(owner.Status);
    EXPECT_EQ(clip.Owner(), &owner) << "one without a window is ignored";
    EXPECT_EQ(error_of(clip), error);
  }
}

}  // namespace
