#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// A system header has a macro of this name, for a call that is no longer needed.
#undef Yield

namespace ui {

class Form;

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No };
enum class Pointer { Default, Hourglass };

struct Message {
  std::string text;
  std::string caption;
  Icon icon = Icon::None;
  Buttons buttons = Buttons::Ok;
  /// The button that Enter presses is the second one.
  bool second_is_default = false;
};

struct SaveDialog {
  std::string title;
  std::string file_name;
  /// As "*.csv".
  std::string default_extension;
  /// Descriptions and patterns in turn, with "|" between them.
  std::string filter;
};

/// Asks for a file that exists.
struct OpenDialog {
  std::string title;
  /// Descriptions and patterns in turn, with "|" between them; the first one is chosen.
  std::string filter;
  /// The folder in which the dialog opens; empty leaves that to the system.
  std::string folder;
};

/// Shows one form. It reports to the form what the user does to the window.
class FormWindow {
 public:
  virtual ~FormWindow() = default;
  virtual void UpdateCaption() = 0;
  virtual void UpdateBounds() = 0;
  /// Visibility and window state (normal, minimised, maximised).
  virtual void UpdateState() = 0;
  /// Makes a shown window the one that the user works with.
  virtual void Activate() = 0;
  virtual void Repaint() = 0;
  virtual std::uintptr_t hwnd() const = 0;
  /// The form is unloaded, and keeps the window: nobody finds it until the form is loaded again.
  virtual void Rest() = 0;
  virtual void Wake() = 0;
  /// The smallest outer size, in twips at the window's own resolution, in which nothing of the layout is cut,
  /// at which a fixed window is made.
  struct Size {
    double width = 0;
    double height = 0;
  };
  virtual Size BestSize() const = 0;
  /// What one of these twips is in the form's bounds: not 1 on a screen whose resolution is not the
  /// program's.
  virtual double BoundsScale() const { return 1; }
};

/// An animation control's window, as long as it exists.
class AnimationWindow {
 public:
  virtual ~AnimationWindow() = default;
  enum class Opened { Yes, ModuleMissing, ClipMissing };
  /// Opens a clip resource of a program file; an empty path is this program.
  virtual Opened OpenResource(const std::string& module_path, std::int32_t resource) = 0;
  virtual Opened OpenFile(const std::string& path) = 0;
  virtual void Show() = 0;
  virtual void Play() = 0;
  /// Closes the clip and hides the window.
  virtual void Close() = 0;
  virtual std::int32_t Width() const = 0;
  virtual std::int32_t Height() const = 0;
  /// 0 when the window around it has taken it along.
  virtual std::uintptr_t hwnd() const = 0;
};

struct AnimationStyle {
  bool centre = false;
  bool transparent = false;
  bool auto_play = false;
};

/// The user's screen: windows, message boxes, pointer, and the message loop.
///
/// One for the process, used from the user-interface thread; the portable tests use a fake.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// Makes the window of a form, hidden, with all controls of its layout.
  virtual std::unique_ptr<FormWindow> MakeWindow(Form& form) = 0;

  /// Makes an animation control inside a window; null if the system has none.
  virtual std::unique_ptr<AnimationWindow> MakeAnimation(std::uintptr_t owner,
                                                         const AnimationStyle& style) = 0;

  /// Shows a modal message box and returns the button pressed. Closing it gives Cancel, No, or Ok if it is
  /// alone.
  virtual Answer ShowMessage(const Message& message) = 0;

  /// Asks for a file to save to; the path chosen, nothing when cancelled. The dialog asks nothing about files
  /// that exist.
  virtual std::optional<std::string> AskSaveFile(const SaveDialog& dialog) = 0;

  /// Asks for a file to read, without the choice to open it read-only; the path chosen, nothing when
  /// cancelled.
  virtual std::optional<std::string> AskOpenFile(const OpenDialog& dialog) = 0;

  /// Puts a text on the clipboard. Throws while another program keeps hold of it.
  virtual void CopyText(const std::string& text) = 0;

  /// Opens a help file at the topic of a context number, or at its first one for 0. False if the file
  /// cannot be shown.
  virtual bool ShowHelp(const std::string& file, int context) = 0;

  /// Lets pending messages run: windows repaint, calls of the director and of the object server come in.
  virtual void Yield() = 0;

  virtual void SetPointer(Pointer pointer) = 0;

  /// Repaints the active window of this program at once, if there is one.
  virtual void RepaintActiveWindow() = 0;

  virtual double TwipsPerPixelX() const = 0;
  virtual double TwipsPerPixelY() const = 0;

  /// The part of the primary screen that windows may cover, in twips.
  struct Area {
    double left = 0, top = 0, width = 0, height = 0;
  };
  virtual Area WorkArea() const = 0;

  /// Ends the message loop and with it the program, when the running event has been dealt with.
  virtual void EndProgram() = 0;
};

/// The hourglass for as long as it lives.
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
