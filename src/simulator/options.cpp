#include "simulator/options.h"

#include <stdexcept>
#include <vector>

#include "text/strings.h"

namespace simulator {
namespace {

std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words;
  bool inside = false;
  bool quoted = false;
  for (const char c : line) {
    if (c == '"') {
      if (!inside) words.emplace_back();
      inside = true;
      quoted = !quoted;
    } else if ((c == ' ' || c == '\t') && !quoted) {
      inside = false;
    } else {
      if (!inside) words.emplace_back();
      inside = true;
      words.back() += c;
    }
  }
  return words;
}

std::string SwitchOf(const std::string& word) {
  const bool is_switch = word.size() > 1 && (word[0] == '/' || word[0] == '-');
  return is_switch ? text::ToLower(word.substr(1)) : std::string();
}

bool IsServerSwitch(const std::string& name) {
  return name == "regserver" || name == "unregserver" || name == "embedding" || name == "automation";
}

}  // namespace

Options ParseOptions(std::string_view arguments) {
  Options options;
  const std::vector<std::string> words = Words(arguments);
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string name = SwitchOf(words[i]);
    if (name == "network") {
      if (++i == words.size()) throw std::invalid_argument("/network needs a file");
      options.network_file = words[i];
    } else if (name == "makedefault") {
      options.make_default = true;
    } else if (name == "help" || name == "-help" || name == "?") {
      options.help = true;
    } else if (name == "version" || name == "-version") {
      options.version = true;
    } else if (!IsServerSwitch(name)) {
      throw std::invalid_argument("'" + words[i] +
                                  "' is not understood; use /network <file>, /makedefault, /regserver, "
                                  "/unregserver, /help, /version");
    }
  }
  return options;
}

}  // namespace simulator
