#include "windows/system/files.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "platform/error.h"
#include "support/conditions.h"
#include "windows/com/wide_text.h"

TEST(Files, ReadsLongPathsInAnyAlphabet) {
  windows::WindowsFiles files;
  std::string folder = "C:\\QM5R \u00C4\u03A9";
  for (int depth = 0; depth < 12; ++depth, folder += "\\a folder with a rather long name") {
    CreateDirectoryW(windows::ToWide("\\\\?\\" + folder).c_str(), nullptr);
    const std::string path = folder + "\\\u03A9.xif";
    CopyFileW(L"C:\\windows\\win.ini", windows::ToWide("\\\\?\\" + path).c_str(), FALSE);
    EXPECT_EQ(files.ReadStart(path, 4).size(), 4u) << depth;
    EXPECT_PRED2(Both, files.FileExists(path), !files.FileExists(folder)) << depth;
    const std::string written = folder + "\\\u03A9.csv";
    for (const char* content : {"longer than what follows", "short", ""}) {
      files.Write(written, content);
      EXPECT_EQ(files.ReadStart(written, 100), content);
    }
    const auto read = files.ReadFolder(folder), above = files.ReadFolder(folder + "\\..");
    ASSERT_PRED2(Both, read.has_value(), above.has_value());
    EXPECT_EQ(read->identity, files.ReadFolder(folder + "\\.\\")->identity);
    EXPECT_NE(read->identity, above->identity);
    int found = 0;
    for (const auto& [name, is_folder] : read->entries) found += name == "\u03A9.xif" && !is_folder;
    EXPECT_EQ(found, 1);
  }
  for (const char* none : {"", "C:\\none", "C:\\windows\\win.ini", "Q:\\"})
    EXPECT_FALSE(files.ReadFolder(none)) << none;
  for (const std::string unwritable : {"C:\\none\\a.csv", "C:\\windows"}) try {
      files.Write(unwritable, "text");
      ADD_FAILURE() << unwritable;
    } catch (const platform::Error& error) {
      EXPECT_TRUE(error.description().starts_with(unwritable + ": ")) << error.description();
    }
  EXPECT_EQ(files.ReadStart("C:\\none", 4) + files.ReadStart("C:\\windows", 4), "");
}
