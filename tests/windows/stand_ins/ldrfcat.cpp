// The tests' LDRFCAT.exe: appends the names of the files in the folder (second argument) to the catalogue
// (first argument).

#include <filesystem>
#include <fstream>

int main(int count, char** words) {
  if (count != 3) return 1;
  std::ofstream catalogue(words[1], std::ios::app);
  for (const auto& entry : std::filesystem::directory_iterator(words[2]))
    catalogue << entry.path().filename().string() << '\n';
  return catalogue ? 0 : 1;
}
