#pragma once

#include <optional>
#include <string>
#include <utility>

#include "windows/ui/native_peer.h"

namespace windows {

inline constexpr const wchar_t* kPutBack = L"Put &back this field";

/// A one-line EDIT. Every way of entering text - typing, pasting, the context menu - goes through the field's
/// key filter, and every change is reported to the field.
class TextFieldPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override;
  void Command(WORD notification) override;
  HBRUSH Colors(HDC dc) override;
  void Prepare() override;

 protected:
  void MakeWindow() override;
  void Show(ui::Aspect aspect) override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  void CatchUp() override;

 private:
  ui::TextField& field() const { return static_cast<ui::TextField&>(control()); }
  LRESULT Character(WPARAM character, LPARAM lparam);
  void Paste();
  void OfferMenu(LPARAM where);
  std::pair<DWORD, DWORD> Selection() const;
  void CentreLine(RECT& client) const;
  void PaintAboveAndBelow() const;
  bool Closed() const;
  COLORREF BackColor() const;

  bool telling_ = false;  // the program itself changes the text
  bool select_on_release_ = false;
};

/// A drop-down list, drawn by the program so that its text shows the field's colour in every style of the
/// system. A text that is no item is an extra item at the end until another text is set.
class ChoiceListPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;

  ui::Extent PreferredSize() const override;
  void Command(WORD notification) override;
  void Draw(const DRAWITEMSTRUCT& item) override;
  HBRUSH Colors(HDC dc) override;

 protected:
  void MakeWindow() override;
  void OnPlaced() override;
  void Show(ui::Aspect aspect) override;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
  /// Selects the list's text.
  void CatchUp() override;

 private:
  ui::ChoiceList& list() const { return static_cast<ui::ChoiceList&>(control()); }
  void FillItems();
  /// Reports the selection to the list, if it has changed.
  void TellChoice();
  std::optional<LRESULT> KeyDown(WPARAM key);
  void OfferMenu(LPARAM where);
  bool DroppedDown() const { return Send(CB_GETDROPPEDSTATE) != 0; }
  std::wstring ItemText(WPARAM index) const;
};

}  // namespace windows
