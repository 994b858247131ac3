#pragma once
// The items of one format: rows in the order in which they are sent, added, deleted and moved.
#include <functional>
#include <map>
#include <string>

#include "controls/combo_box.h"
#include "controls/layout.h"
#include "controls/picture_list.h"
#include "controls/simple_widgets.h"
#include "editor/context.h"
#include "model/advanced_format.h"

namespace orv::editor {

class ItemList {
  public:
    using FormatAccess = std::function<model::AdvancedFormat&()>;

    /// Adds a heading and `pls` to `parent`. `format` is asked anew by each handler.
    ItemList(Context& context, controls::Frame& parent, FormatAccess format);

    void SetUp();
    /// Shows the items of the format, which is at `index`, with the selection that it had before.
    void Fill(int index);
    /// Writes the rows anew; the selection stays.
    void Refresh();
    controls::LayoutPtr Layout();

    /// 1-based; 0 without one.
    int Selected() const {
        const auto found = selected_.find(index_);
        return found == selected_.end() ? 0 : found->second;
    }
    /// Adds an item behind the selected one, at the end without one.
    void Take(const std::wstring& key);

    /// Stores what is being typed for the selected item; false keeps the selection and the items as they are.
    std::function<bool()> onLeave;
    /// Another item is selected, or none.
    std::function<void()> onSelected;
    /// The code that a new item refers to; nothing chosen: none.
    const controls::ComboBox* codes = nullptr;
    /// An item's text of the user's own in displayed form, as far as it is typed.
    std::function<std::wstring(const model::OutItem&)> userText;

  private:
    void Drop(const std::wstring& key, int gap);
    void Insert(const std::wstring& key, int gap);
    /// True when no item may be added or removed; says so.
    bool CountIsFixed();
    bool IsFull();
    void Move(int item, int to);
    void Delete(int item);
    void Select();
    void Show(int position);
    controls::PictureList::Row RowFor(const model::OutItem& item);

    Context& context_;
    FormatAccess format_;
    controls::Label& lblItems_;
    controls::PictureList& pls_;
    int index_ = 0;
    std::map<int, int> selected_; ///< position by format, so that each is found again as it was left
};

} // namespace orv::editor
