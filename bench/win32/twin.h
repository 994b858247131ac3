#pragma once
// A copy of a window with all that is below it, made of bare windows of the same classes and filled by plain messages
// with what was read from the original.
#include "platform/win32/owned.h"

#include <string>
#include <vector>

namespace orv::bench {

class Twin {
  public:
    /// What one window shows.
    struct Shown {
        std::size_t window = 0;
        std::wstring text;
        std::string rich;
        bool enabled = true;
        bool visible = true;
        int chosen = -1;
        std::vector<std::wstring> items;
        std::vector<UINT> states;
    };
    using Contents = std::vector<Shown>;

    /// Made below `parent`; lists that are not filled anew with every page have their items from then on.
    Twin(HWND original, HWND parent);

    /// Of everything below `page` and of `others`, windows of the original.
    Contents Read(HWND page, const std::vector<HWND>& others) const;
    /// Every text, list and state of it, one message after the other.
    void Fill(const Contents& contents) const;
    /// The copy of one of the original's windows.
    HWND Of(HWND original) const;
    HWND Root() const { return copies_.front(); }

  private:
    void Copy(HWND original, HWND parent);
    Shown ReadOne(std::size_t index) const;
    void FillOne(const Shown& shown) const;

    std::vector<HWND> originals_;
    std::vector<HWND> copies_;
};

} // namespace orv::bench
