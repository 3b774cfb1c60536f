#include "windows/system/files.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "platform/error.h"
#include "support/conditions.h"
#include "support/error_of.h"
#include "windows/com/owners.h"
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
  EXPECT_EQ(files.ReadStart("C:\\none", 4) + files.ReadStart("C:\\windows", 4), "");
}

TEST(Files, ARefusedWriteLeavesTheFolderAsItWas) {
  windows::WindowsFiles files;
  std::string folder = "C:\\QM5R \u00DC";
  for (int depth = 0; depth < 9; ++depth) folder += "\\a folder with a rather long name";
  const std::string path = folder + "\\\u03A9.qm5r";
  const std::wstring long_path = L"\\\\?\\" + windows::ToWide(path);
  files.WriteNew(path, "former");
  struct Case {
    const char* target;
    DWORD attributes;
    bool is_open, must_be_new;
  };
  for (const auto& [target, attributes, is_open, must_be_new] :
       {Case{"exists", FILE_ATTRIBUTE_NORMAL, false, true},
        Case{"is read-only", FILE_ATTRIBUTE_READONLY, false, false},
        Case{"is in use", FILE_ATTRIBUTE_NORMAL, true, false}}) {
    SetFileAttributesW(long_path.c_str(), attributes);
    windows::Handle user;
    if (is_open)
      user = windows::Own(
          CreateFileW(long_path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    const platform::Error error = ErrorOf(
        [&, is_new = must_be_new] { is_new ? files.WriteNew(path, "later") : files.Write(path, "later"); });
    user.reset();
    EXPECT_TRUE(error.description().starts_with(path + ": ")) << target << ": " << error.description();
    EXPECT_EQ(files.ReadStart(path, 100), "former") << target;
    EXPECT_EQ(files.ReadFolder(folder)->entries.size(), 1u) << target;
  }
  for (const std::string unwritable : {"Q:\\none\\a.csv", "C:\\windows", "C:\\windows\\win.ini\\a.csv"})
    EXPECT_TRUE(
        ErrorOf([&] { files.Write(unwritable, "text"); }).description().starts_with(unwritable + ": "));
  EXPECT_TRUE(DeleteFileW(long_path.c_str()));
  for (; folder.size() > 3; folder.resize(std::max<std::size_t>(folder.rfind('\\'), 3)))
    EXPECT_TRUE(RemoveDirectoryW((L"\\\\?\\" + windows::ToWide(folder)).c_str())) << folder;
}
