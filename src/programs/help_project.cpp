#include <cstdio>
#include <exception>

#include "help_file/project.h"
#include "help_file/source.h"

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("Writes the project of the help file.\n\n    help_project <sources folder> <project folder>\n",
               stderr);
    return 2;
  }
  try {
    help_file::WriteFolder(arguments[2], help_file::MakeProject(help_file::ReadFolder(arguments[1])));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
