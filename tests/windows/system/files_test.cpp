#include "windows/system/files.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "windows/com/wide_text.h"

namespace {

/// The entries by name, folders with a backslash behind theirs.
std::string NamesIn(const std::optional<platform::Files::Folder>& folder) {
  std::vector<std::string> names;
  for (const auto& entry : folder.value().entries)
    names.push_back(entry.name + (entry.is_folder ? "\\" : ""));
  std::ranges::sort(names);
  std::string all;
  for (const std::string& name : names) all += name + "|";
  return all;
}

TEST(Files, ReadsFoldersAndTheStartOfFiles) {
  const windows::WindowsFiles files;
  const std::string top = "C:\\QM5R files", umlaut = top + "\\\u00C4rger \u03A9";
  std::string deep = umlaut;
  CreateDirectoryW(windows::ToWide(top).c_str(), nullptr);
  CreateDirectoryW(windows::ToWide(umlaut).c_str(), nullptr);
  for (int i = 0; i < 12; ++i) {
    deep += "\\a folder with a rather long name";
    CreateDirectoryW(windows::ToWide("\\\\?\\" + deep).c_str(), nullptr);
  }
  for (const std::string& folder : {top, umlaut, deep}) {
    const std::string path = folder + "\\\u03A9.xif";
    const HANDLE file = CreateFileW(windows::ToWide("\\\\?\\" + path).c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, "line\r\nend", 9, &written, nullptr);
    CloseHandle(file);
    EXPECT_EQ(files.ReadStart(path, 5), "line\r");
    EXPECT_EQ(files.ReadStart(path, 100), "line\r\nend");
    EXPECT_TRUE(files.FileExists(path));
    EXPECT_FALSE(files.FileExists(path + "x") || files.FileExists(folder));
    EXPECT_EQ(files.ReadFolder(folder)->identity, files.ReadFolder(folder + "\\")->identity);
  }
  EXPECT_EQ(NamesIn(files.ReadFolder(top)), "\u00C4rger \u03A9\\|\u03A9.xif|");
  EXPECT_EQ(NamesIn(files.ReadFolder(deep)), "\u03A9.xif|");
  EXPECT_EQ(files.ReadFolder(top)->identity, files.ReadFolder(umlaut + "\\..")->identity);
  EXPECT_NE(files.ReadFolder(top)->identity, files.ReadFolder(umlaut)->identity);
  for (const char* none : {"", "C:\\QM5R files\\none", "C:\\QM5R files\\\u03A9.xif", "Q:\\"})
    EXPECT_FALSE(files.ReadFolder(none)) << none;
  EXPECT_EQ(files.ReadStart("C:\\QM5R files\\none", 5) + files.ReadStart(top, 5), "");
  EXPECT_NE(NamesIn(files.ReadFolder("C:\\")).find("windows\\|"), std::string::npos);
}

}  // namespace
