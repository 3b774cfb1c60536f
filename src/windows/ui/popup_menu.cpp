#include "windows/ui/popup_menu.h"

#include <windowsx.h>

#include <memory>
#include <type_traits>

namespace windows {
namespace {

struct MenuDestroy {
  void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDestroy>;

}  // namespace

std::optional<std::size_t> ChooseFromMenu(HWND window, LPARAM where, const std::vector<MenuItem>& items) {
  const OwnedMenu menu(CreatePopupMenu());
  for (std::size_t i = 0; i < items.size(); ++i)
    AppendMenuW(menu.get(), MF_STRING | (items[i].enabled ? 0u : static_cast<UINT>(MF_GRAYED)), i + 1,
                items[i].caption.c_str());
  POINT at{GET_X_LPARAM(where), GET_Y_LPARAM(where)};
  if (where == -1) {  // by the keyboard
    RECT place;
    GetWindowRect(window, &place);
    at = {place.left, place.top};
  }
  const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(at.x),
                                    static_cast<int>(at.y), 0, window, nullptr);
  if (chosen <= 0) return std::nullopt;
  return static_cast<std::size_t>(chosen - 1);
}

}  // namespace windows
