#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A system header defines an obsolete macro with this name.
#undef Yield

namespace ui {

class Form;
class HasWindow;

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No };
enum class Pointer { Default, Hourglass };

struct Message {
  std::string text;
  std::string caption;
  Icon icon = Icon::None;
  Buttons buttons = Buttons::Ok;
  /// Enter presses the second button.
  bool second_is_default = false;
};

struct SaveDialog {
  std::string title;
  std::string file_name;
  /// In the form "*.csv".
  std::string default_extension;
  /// Descriptions and patterns in turn, separated by "|".
  std::string filter;
};

/// Asks for an existing file.
struct OpenDialog {
  std::string title;
  /// Descriptions and patterns in turn, separated by "|"; the first is selected.
  std::string filter;
  /// The initial folder; if empty, the system chooses it.
  std::string folder;
};

/// Shows one form and reports the user's actions to it.
class FormWindow {
 public:
  virtual ~FormWindow() = default;
  virtual void UpdateCaption() = 0;
  virtual void UpdateBounds() = 0;
  /// Visibility and window state (normal, minimised, maximised).
  virtual void UpdateState() = 0;
  /// Makes a shown window the active one.
  virtual void Activate() = 0;
  virtual void Repaint() = 0;
  virtual std::uintptr_t hwnd() const = 0;
  /// Hides the window of an unloaded form, so that nobody finds it, until the form is loaded again.
  virtual void Rest() = 0;
  virtual void Wake() = 0;
  /// The smallest outer size that cuts nothing of the layout, in twips at the window's own resolution. Fixed
  /// windows open at this size.
  struct Size {
    double width = 0;
    double height = 0;
  };
  virtual Size BestSize() const = 0;
  /// Converts these twips to those of the form's bounds; not 1 if the screen's resolution differs from the
  /// program's.
  virtual double BoundsScale() const { return 1; }
};

/// The window of an animation control.
class AnimationWindow {
 public:
  virtual ~AnimationWindow() = default;
  enum class Opened { Yes, ModuleMissing, ClipMissing };
  /// Opens a clip resource of a program file; an empty path means this program.
  virtual Opened OpenResource(const std::string& module_path, std::int32_t resource) = 0;
  virtual Opened OpenFile(const std::string& path) = 0;
  virtual void Show() = 0;
  virtual void Play() = 0;
  /// Closes the clip and hides the window.
  virtual void Close() = 0;
  virtual std::int32_t Width() const = 0;
  virtual std::int32_t Height() const = 0;
  /// 0 if the window around it has been destroyed.
  virtual std::uintptr_t hwnd() const = 0;
};

struct AnimationStyle {
  bool centre = false;
  bool transparent = false;
  bool auto_play = false;
};

/// The user's screen: windows, message boxes, pointer, and the message loop.
///
/// One per process, used from the user-interface thread; the portable tests use a fake.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// Creates the hidden window of a form, with all controls of its layout.
  virtual std::unique_ptr<FormWindow> MakeWindow(Form& form) = 0;

  /// Creates an animation control in a window; null if the system has none.
  virtual std::unique_ptr<AnimationWindow> MakeAnimation(std::uintptr_t owner,
                                                         const AnimationStyle& style) = 0;

  /// Shows a modal message box and returns the pressed button. Closing it returns Cancel or No, or Ok if that
  /// is the only button.
  virtual Answer ShowMessage(const Message& message) = 0;

  /// Asks for a path to save to; nothing if cancelled. Does not ask before replacing a file.
  virtual std::optional<std::string> AskSaveFile(const SaveDialog& dialog) = 0;

  /// Asks for a file to read, without an option for read-only; nothing if cancelled.
  virtual std::optional<std::string> AskOpenFile(const OpenDialog& dialog) = 0;

  /// Shows a menu below a control, for a button that opens one, and returns the position of the chosen item;
  /// nothing if the user chooses none. "&" in a caption marks the accelerator.
  virtual std::optional<std::size_t> ChooseFromMenu(HasWindow& button,
                                                    const std::vector<std::string>& captions) = 0;

  /// Processes messages until the form is hidden or unloaded, or the program ends.
  virtual void RunWhileVisible(Form& form) = 0;

  /// Copies a text to the clipboard. Throws while another program keeps the clipboard open.
  virtual void CopyText(const std::string& text) = 0;

  /// Opens a help file at the topic of a context number, or at its first topic for 0. False on failure.
  virtual bool ShowHelp(const std::string& file, int context) = 0;

  /// Processes waiting messages: windows repaint, calls of the director and of the object server arrive.
  virtual void Yield() = 0;

  virtual void SetPointer(Pointer pointer) = 0;

  /// Repaints the active window of this program at once, if there is one.
  virtual void RepaintActiveWindow() = 0;

  virtual double TwipsPerPixelX() const = 0;
  virtual double TwipsPerPixelY() const = 0;

  /// The work area of the primary screen, in twips.
  struct Area {
    double left = 0, top = 0, width = 0, height = 0;
  };
  virtual Area WorkArea() const = 0;

  /// Ends the message loop and so the program, after the current event.
  virtual void EndProgram() = 0;
};

/// Shows the hourglass while it exists.
class BusyPointer {
 public:
  explicit BusyPointer(Desktop& desktop) : desktop_(desktop) { desktop_.SetPointer(Pointer::Hourglass); }
  ~BusyPointer() { desktop_.SetPointer(Pointer::Default); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  Desktop& desktop_;
};

}  // namespace ui
