#pragma once
// Small pictures by name, at the resolution of one window.
#include "platform/win32/owned.h"

#include <map>
#include <optional>
#include <string>

#include <commctrl.h>

#include "platform/win32/module.h"

namespace orv::controls::win32 {

struct CloseImageList {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};
using OwnedImageList = platform::win32::Owned<HIMAGELIST, CloseImageList>;

/// Filled as pictures are asked for, from the bitmap resources of `module`: for each picture one of 16 pixels named by
/// its key in upper case, and one of 32 whose name has "32" at its end. Magenta is what lets the background through.
class Pictures {
  public:
    static constexpr int kSide = 16; ///< of a picture at 96 dots an inch

    explicit Pictures(HINSTANCE module = platform::win32::OwnModule()) : module_(module) {}
    /// Starts anew at another resolution: indices and the list itself end.
    void Refresh(int dpi);
    /// Place in the list; -1 when there is no such picture.
    int IndexOf(const std::wstring& key);
    HIMAGELIST List() const { return list_.Get(); }
    /// Width and height of each, in pixels.
    int Side() const { return side_; }
    /// At a point of a device context; nothing for a picture that is not there. A faint one belongs to something
    /// that cannot be used.
    void Draw(HDC dc, const std::wstring& key, POINT at, bool faint = false);

  private:
    int Load(const std::wstring& key);

    HINSTANCE module_;
    OwnedImageList list_;
    std::map<std::wstring, int> known_;
    int side_ = kSide;
};

} // namespace orv::controls::win32
