// Compares the search for a program ID's interface file below a large folder with grep -rl for the ID and
// with find, which only walks the folder. No file has the ID, so each reads all files.

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "xif/search.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kWanted = "8000D3550004041D";

/// This computer's files under Windows paths: "\" means "/".
class DiskFiles : public platform::Files {
 public:
  std::optional<Folder> ReadFolder(const std::string& path) const override {
    DIR* const stream = opendir(LocalPath(path).c_str());
    if (!stream) return std::nullopt;
    struct stat about {};
    fstat(dirfd(stream), &about);
    Folder folder{std::to_string(about.st_dev) + ":" + std::to_string(about.st_ino), {}};
    while (const dirent* entry = readdir(stream))
      if (const std::string name = entry->d_name; name != "." && name != "..")
        folder.entries.push_back({name, entry->d_type == DT_DIR});
    closedir(stream);
    return folder;
  }
  std::string ReadStart(const std::string& path, std::size_t bytes) const override {
    std::string start(bytes, '\0');
    const int file = open(LocalPath(path).c_str(), O_RDONLY);
    const ssize_t count = file < 0 ? 0 : read(file, start.data(), bytes);
    if (file >= 0) close(file);
    start.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return start;
  }
  bool FileExists(const std::string& path) const override { return fs::is_regular_file(LocalPath(path)); }
  void Write(const std::string&, std::string_view) override { std::abort(); }
  void WriteNew(const std::string&, std::string_view) override { std::abort(); }
  std::unique_ptr<Growing> CreateGrowing(const std::string&) override { std::abort(); }

 private:
  static std::string LocalPath(std::string path) {
    for (char& c : path)
      if (c == '\\') c = '/';
    return path;
  }
};

/// A tree of interface files like those of manufacturers, about 6 kB each, 100 per folder. Created once.
fs::path Tree(std::int64_t files) {
  const fs::path tree = fs::temp_directory_path() / ("qm5r-bench-" + std::to_string(files));
  if (fs::exists(tree / "complete")) return tree;
  fs::remove_all(tree);
  std::string rest;
  for (int line = 0; line < 120; ++line)
    rest += "VAR nviValue" + std::to_string(line) + " 0 0 0 0\r\n0 1 63 0 0 1 0\r\n";
  for (std::int64_t i = 0; i < files; ++i) {
    const fs::path folder = tree / ("Maker " + std::to_string(i / 100));
    if (i % 100 == 0) fs::create_directories(folder);
    std::ofstream(folder / ("Device " + std::to_string(i) + ".xif"), std::ios::binary)
        << "File: Device " << i << "\r\nCopyright\r\nAll Rights Reserved.\r\n90:00:01:" << std::hex
        << (16 + i % 200) << ":00:04:04:1D\r\n2 15 1 5 3 0\r\n"
        << rest;
  }
  std::ofstream(tree / "complete");
  return tree;
}

/// Empties the system's cache if the user may, so that the disk is read.
bool ForgetCache() {
  sync();
  std::ofstream caches("/proc/sys/vm/drop_caches");
  caches << 3 << std::flush;
  return caches.good();
}

template <class Search>
void OverTree(benchmark::State& state, const Search& search) {
  const std::string tree = Tree(state.range(0)).string();
  const bool cold = state.range(1) != 0;
  search(tree);
  for (auto _ : state) {
    if (cold) {
      state.PauseTiming();
      if (!ForgetCache()) return state.SkipWithError("only root can empty the cache");
      state.ResumeTiming();
    }
    search(tree);
  }
}

void Search(benchmark::State& state) {
  OverTree(state, [](const std::string& tree) {
    std::string wanted = kWanted;
    if (!xif::FindXifFile(DiskFiles(), tree + "\\", wanted).empty()) std::abort();
  });
}
void Run(const std::string& command) {
  if (std::system((command + " >/dev/null").c_str()) == -1) std::abort();
}
void Grep(benchmark::State& state) {
  OverTree(state, [](const std::string& tree) {
    Run("grep -rl --include='*.xif' 80:00:D3:55:00:04:04:1D '" + tree + "'");
  });
}
void Find(benchmark::State& state) {
  OverTree(state, [](const std::string& tree) { Run("find '" + tree + "' -name '*.xif'"); });
}

void Trees(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"files", "cold"})->ArgsProduct({{100, 10'000, 100'000}, {0, 1}});
  benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
}
BENCHMARK(Search)->Apply(Trees);
BENCHMARK(Grep)->Apply(Trees);
BENCHMARK(Find)->Apply(Trees);

}  // namespace
