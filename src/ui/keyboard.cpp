#include "ui/keyboard.h"

#include <algorithm>

namespace ui {
namespace {

/// One control in the order of the keyboard.
struct Stop {
  Control* control;
  const Control* frame;  // the innermost frame around the control
};

char32_t Lower(char32_t letter) { return letter >= U'A' && letter <= U'Z' ? letter + 32 : letter; }

bool TakesFocus(const Control& control) {
  switch (control.kind()) {
    case Control::Kind::TextField:
    case Control::Kind::ChoiceList:
    case Control::Kind::Button:
    case Control::Kind::OptionButton:
    case Control::Kind::CheckBox:
    case Control::Kind::Tabs:
    case Control::Kind::ListView:
    case Control::Kind::WebView:
      return true;
    default:
      return false;
  }
}

bool HasCaption(const Control& control) {
  switch (control.kind()) {
    case Control::Kind::Label:
      return !static_cast<const Label&>(control).shows_data;
    case Control::Kind::Button:
    case Control::Kind::OptionButton:
    case Control::Kind::CheckBox:
    case Control::Kind::Frame:
      return true;
    default:
      return false;
  }
}

/// Collects the visible and enabled controls, and `also`, which need not be either.
void Collect(const Box& box, const Control* frame, const Control* also, std::vector<Stop>& stops) {
  if (box.control && ((box.control->Visible() && box.control->Enabled()) || box.control == also))
    stops.push_back({box.control, frame});
  if (box.kind == Box::Kind::Frame) frame = box.control;
  for (std::size_t i = 0; i < box.children.size(); ++i) {
    const bool behind =
        box.kind == Box::Kind::Pages && static_cast<const Tabs*>(box.control)->Selected() != i;
    if (!behind) Collect(box.children[i], frame, also, stops);
  }
}

std::vector<Stop> Usable(const Box& layout, const Control* also = nullptr) {
  std::vector<Stop> stops;
  Collect(layout, nullptr, also, stops);
  return stops;
}

OptionButton* AsOption(const Stop& stop) {
  return stop.control->kind() == Control::Kind::OptionButton ? static_cast<OptionButton*>(stop.control)
                                                             : nullptr;
}

bool IsTabStop(const std::vector<Stop>& stops, const Stop& stop) {
  const OptionButton* option = AsOption(stop);
  if (!option) return TakesFocus(*stop.control);
  if (option->Selected()) return true;
  for (const Stop& other : stops) {
    const OptionButton* one = AsOption(other);
    if (!one || other.frame != stop.frame) continue;
    if (one->Selected()) return false;
  }
  const auto first = std::find_if(stops.begin(), stops.end(), [&](const Stop& other) {
    return AsOption(other) && other.frame == stop.frame;
  });
  return first->control == stop.control;
}

/// True if the control is in the box; the path then has the pages that lead to it.
bool FindPages(const Box& box, const Control& control, std::vector<PagePlace>& path) {
  if (box.control == &control) return true;
  for (std::size_t i = 0; i < box.children.size(); ++i) {
    const bool page = box.kind == Box::Kind::Pages;
    if (page) path.push_back({static_cast<Tabs*>(box.control), i});
    if (FindPages(box.children[i], control, path)) return true;
    if (page) path.pop_back();
  }
  return false;
}

}  // namespace

char32_t AcceleratorOf(const std::string& caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] != '&') return Lower(static_cast<unsigned char>(caption[i + 1]));
    ++i;
  }
  return 0;
}

Control* NextControl(const Box& layout, const Control* from, Direction direction) {
  const std::vector<Stop> stops = Usable(layout, from);
  std::vector<Control*> order;
  std::size_t start = 0;
  bool found = false;
  for (const Stop& stop : stops) {
    if (stop.control == from) {
      start = order.size();
      found = true;
    } else if (IsTabStop(stops, stop)) {
      order.push_back(stop.control);
    }
  }
  if (order.empty()) return nullptr;
  const std::size_t count = order.size();
  if (direction == Direction::Forward) return order[start % count];
  return order[found ? (start + count - 1) % count : count - 1];
}

std::vector<OptionButton*> OptionsAround(const Box& layout, const OptionButton& option) {
  const std::vector<Stop> stops = Usable(layout);
  const auto self =
      std::find_if(stops.begin(), stops.end(), [&](const Stop& stop) { return stop.control == &option; });
  std::vector<OptionButton*> options;
  if (self == stops.end()) return options;
  for (const Stop& stop : stops)
    if (AsOption(stop) && stop.frame == self->frame) options.push_back(AsOption(stop));
  return options;
}

OptionButton* NextOption(const Box& layout, const OptionButton& from, Direction direction) {
  const std::vector<OptionButton*> options = OptionsAround(layout, from);
  const auto self = std::find(options.begin(), options.end(), &from);
  if (self == options.end()) return nullptr;
  const std::size_t step = direction == Direction::Forward ? 1 : options.size() - 1;
  return options[(static_cast<std::size_t>(self - options.begin()) + step) % options.size()];
}

std::optional<Accelerator> FindAccelerator(const Box& layout, char32_t letter, const Control* active) {
  letter = Lower(letter);
  const std::vector<Stop> stops = Usable(layout);
  std::vector<Accelerator> answers;
  std::size_t after = 0;  // the answer after the active control or else after the page in front
  for (std::size_t i = 0; i < stops.size(); ++i) {
    Control* const control = stops[i].control;
    if (control->kind() == Control::Kind::Tabs) {
      const auto& tabs = static_cast<const Tabs&>(*control);
      for (std::size_t page = 0; page < tabs.Captions().size(); ++page) {
        if (AcceleratorOf(tabs.Captions()[page]) != letter) continue;
        answers.push_back({control, page, true});
        if (page == tabs.Selected()) after = answers.size();
      }
    } else if (HasCaption(*control) && AcceleratorOf(control->Text()) == letter) {
      std::size_t target = i;
      while (target < stops.size() && !TakesFocus(*stops[target].control)) ++target;
      if (target == stops.size()) continue;
      answers.push_back({stops[target].control, std::nullopt, true});
      if (answers.back().control == active) after = answers.size();
    }
  }
  if (letter == 0 || answers.empty()) return std::nullopt;
  Accelerator answer = answers[after % answers.size()];
  answer.only_one = answers.size() == 1;
  return answer;
}

std::vector<PagePlace> PagesAround(const Box& layout, const Control& control) {
  std::vector<PagePlace> path;
  FindPages(layout, control, path);
  return path;
}

}  // namespace ui
