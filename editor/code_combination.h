#pragma once
// How codes are combined, and how many groups there are when an expression does it.
#include <cstdint>
#include <functional>
#include <vector>

#include "controls/frame.h"
#include "controls/layout.h"
#include "editor/fields.h"

namespace orv::editor {

class CodeCombination {
  public:
    /// `chosen` runs in the handler of another combination. The context outlives the object.
    CodeCombination(Context& context, controls::Widget& page, std::function<void()> chosen);
    CodeCombination(const CodeCombination&) = delete;
    CodeCombination& operator=(const CodeCombination&) = delete;

    /// The options are the device's: their layout has to be asked for again behind SetUp.
    controls::LayoutPtr Layout();
    void SetUp();
    void Fill();

  private:
    controls::OptionButton& Option(std::int32_t value);
    void SetUpOptions();
    void SetUpCount();
    void ShowCount();
    void Choose(std::int32_t value);
    void ChangeCount();
    /// False when the user wants to keep the items that refer to groups above `count`.
    bool RemoveItemsAbove(std::int32_t count);

    Context& context_;
    std::function<void()> chosen_;
    controls::Frame& fraCodeComb_;
    controls::Frame& fraCodeCombOptions_;
    std::vector<controls::OptionButton*> made_; ///< of every device so far
    std::vector<controls::OptionButton*> used_; ///< of this device, in its order
    controls::Label& lblCodeComb_;              ///< the reason why there are none
    controls::Label& lblSlotsCount_;
    controls::ComboBox& cboSlotsCount_;
    std::wstring countHint_;
    bool countPresent_ = false;
};

} // namespace orv::editor
