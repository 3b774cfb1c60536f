#include "simulator/interface_file.h"

#include <sstream>

#include "simulator/bytes.h"
#include "simulator/errors.h"
#include "text/strings.h"

namespace simulator {
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

/// Nothing where a piece is not two hexadecimal digits.
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
  if (!HasExtension(path, ".XIF")) Fail(Code::Internal, path + " is no external interface file.");
  const auto id = ProgramId(Read(read, path));
  if (!id) Fail(Code::Internal, "The file " + path + " has no program ID.");
  return *id;
}

std::string ProgramIdOfImport(const FileReader& read, const std::string& path) {
  if (!HasExtension(path, ".XFB")) return ProgramIdOfXif(read, path);
  Read(read, path);
  std::string beside = path.substr(0, path.size() - kExtension);
  beside += read(beside + "XIF") ? "XIF" : "xif";  // where letter case matters, either
  return ProgramIdOfXif(read, beside);
}

}  // namespace simulator
