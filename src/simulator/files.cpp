#include "simulator/files.h"

#include <fstream>
#include <sstream>
#include <system_error>

#include "simulator/bytes.h"
#include "simulator/errors.h"
#include "text/strings.h"

namespace simulator {

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path FromUtf8(const std::string& path) {
  return std::filesystem::path(std::u8string(path.begin(), path.end()));
}

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (file) text << file.rdbuf();
  if (!file || text.fail()) return std::nullopt;
  return text.str();
}

void ReplaceFile(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::path fresh = path;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(fresh, path, error);
  if (file && !error) return;
  std::error_code ignored;
  std::filesystem::remove(fresh, ignored);
  throw FileError(Utf8(path) + ": cannot be written");
}

namespace {

constexpr int kLineOfProgramId = 4;
constexpr std::size_t kBytes = 8;
constexpr std::size_t kColumnsOfByte = 3;
constexpr std::size_t kExtension = 3;

std::string ProgramIdLine(const std::string& contents) {
  std::istringstream lines(contents);
  std::string line;
  for (int i = 0; i < kLineOfProgramId; ++i) std::getline(lines, line);
  if (line.find_first_not_of(" \t\r") == std::string::npos) std::getline(lines, line);
  return line;
}

/// Nothing if a piece is not two hexadecimal digits.
std::optional<std::string> ProgramId(const std::string& contents) {
  const std::string line = ProgramIdLine(contents);
  std::string digits;
  for (std::size_t i = 0; i < kBytes && i * kColumnsOfByte < line.size(); ++i)
    digits += line.substr(i * kColumnsOfByte, 2);
  const auto bytes = FromHex(digits);
  if (!bytes || bytes->size() != kBytes) return std::nullopt;
  return ToHex(*bytes);
}

bool HasExtension(const std::string& path, const std::string& extension) {
  return path.size() > extension.size() &&
         text::EqualIgnoringCase(path.substr(path.size() - extension.size()), extension);
}

std::string Read(const FileReader& read, const std::string& path) {
  auto contents = read(path);
  if (!contents) Fail(Code::Internal, "The file " + path + " cannot be read.");
  return *std::move(contents);
}

}  // namespace

std::string ProgramIdOfXif(const FileReader& read, const std::string& path) {
  if (!HasExtension(path, ".XIF")) Fail(Code::Internal, path + " is not an external interface file.");
  const auto id = ProgramId(Read(read, path));
  if (!id) Fail(Code::Internal, "The file " + path + " has no program ID.");
  return *id;
}

std::string ProgramIdOfImport(const FileReader& read, const std::string& path) {
  if (!HasExtension(path, ".XFB")) return ProgramIdOfXif(read, path);
  Read(read, path);
  std::string beside = path.substr(0, path.size() - kExtension);
  beside += read(beside + "XIF") ? "XIF" : "xif";  // for case-sensitive file systems
  return ProgramIdOfXif(read, beside);
}

}  // namespace simulator
