#include "editor/transports_dialog.h"

#include "controls/check_list.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::CheckList;
using controls::Grow;
using text::Id;
using text::Load;

constexpr int kTransports = 32;
constexpr int kLeastRows = 8;

/// Transport 31 is the sign bit.
std::int32_t BitOf(int transport) {
    return static_cast<std::int32_t>(std::uint32_t{1} << transport);
}

class TransportsDialog : public controls::Dialog {
  public:
    TransportsDialog(Context& context, std::int32_t index);
    bool Confirmed() const { return confirmed_; }

  private:
    void AddButtons();
    void Bind();
    void FillList();
    /// The formats other than the one edited that use a transport, "1, 3"; empty when it is free.
    std::wstring UsersOf(std::int32_t bit) const;
    void OnCheck(int row, bool checked);
    void OnOK();
    void ShowUsers(int row);
    template <typename Action>
    void Handle(const wchar_t* handler, Action&& action) {
        platform::Guarded(context_.state.platform.boxes, {L"frmTransports.", handler}, std::forward<Action>(action));
    }

    Context& context_;
    std::int32_t index_; ///< of the format: whoever replaces the root meanwhile leaves no dangling reference here
    std::int32_t working_ = 0;
    bool confirmed_ = false;
    controls::Label& lblTransports_;
    CheckList& lvw_;
    controls::Label& lblUsers_;
    controls::Button* cmdOK_ = nullptr;
    controls::Button* cmdCancel_ = nullptr;
};

TransportsDialog::TransportsDialog(Context& context, std::int32_t index)
    : Dialog(context.state.platform.boxes, context.state.platform.pump), context_(context), index_(index),
      lblTransports_(Form().Root().Add<controls::Label>(L"lblTransports")), lvw_(Form().Root().Add<CheckList>(L"lvw")),
      lblUsers_(Form().Root().Add<controls::Label>(L"lblUsers")) {
    SetTitle(Load(Id::TransportsTitle) + std::to_wstring(index));
    lblTransports_.SetCaption(Load(Id::TransportsLabel));
    lvw_.SetAccessibleName(lblTransports_.PlainCaption());
    lvw_.SetLeastRows(kLeastRows);
    lblUsers_.SetElides(true);
    AddButtons();
    Bind();
    FillList();
    SetContent(controls::Column(controls::Boxed(
        Cell(lblTransports_), Cell(lvw_, Grow::Both), Cell(lblUsers_, Grow::Across),
        controls::Row(controls::Boxed(controls::Spring(Grow::Across), Cell(*cmdOK_), Cell(*cmdCancel_))))));
}

void TransportsDialog::AddButtons() {
    cmdOK_ = &Form().Root().Add<controls::Button>(L"cmdOK");
    cmdOK_->SetCaption(Load(Id::ButtonOK));
    cmdCancel_ = &Form().Root().Add<controls::Button>(L"cmdCancel");
    cmdCancel_->SetCaption(Load(Id::ButtonCancel));
    cmdCancel_->SetReleases(true);
    SetDefaultButton(cmdOK_);
    SetCancelButton(cmdCancel_);
}

void TransportsDialog::Bind() {
    lvw_.onCheck = [this](int row, bool checked) { Handle(L"lvw_ItemCheck", [&] { OnCheck(row, checked); }); };
    lvw_.onSelect = [this](int row) { Handle(L"lvw_ItemClick", [&] { ShowUsers(row); }); };
    cmdOK_->onClick = [this] { Handle(L"cmdOK_Click", [this] { OnOK(); }); };
    cmdCancel_->onClick = [this] { Close(); };
}

void TransportsDialog::FillList() {
    const model::OutFormatConfig& root = context_.root();
    working_ = context_.root().AdvancedFormats().Item(index_).Transports();
    std::vector<CheckList::Row> rows;
    for (int transport = 0; transport < kTransports; ++transport) {
        const std::wstring description = root.TransportDesc(static_cast<std::uint8_t>(transport));
        const std::int32_t bit = BitOf(transport);
        if (!description.empty() && (root.AvailableTransports() & bit) != 0)
            rows.push_back({description, bit, (working_ & bit) != 0, !UsersOf(bit).empty()});
    }
    if (rows.empty()) {
        rows.push_back({Load(Id::NoTransports), 0, false, true});
        cmdOK_->SetEnabled(false);
    }
    lvw_.SetRows(std::move(rows));
    lvw_.SetSelected(0);
    ShowUsers(0);
}

std::wstring TransportsDialog::UsersOf(std::int32_t bit) const {
    std::wstring users;
    for (const model::AdvancedFormat& format : context_.root().AdvancedFormats())
        if (format.Index() != index_ && (format.Transports() & bit) != 0)
            users += (users.empty() ? L"" : L", ") + std::to_wstring(format.Index());
    return users;
}

void TransportsDialog::OnCheck(int row, bool checked) {
    const CheckList::Row& changed = lvw_.Rows()[static_cast<std::size_t>(row)];
    if (changed.greyed) {
        // Meant for either way: a device that gave one transport to two formats shows the row ticked, and unticking
        // it here takes nothing away.
        lvw_.SetChecked(row, false);
        context_.state.platform.boxes.Beep();
        ShowUsers(row);
        return;
    }
    working_ = checked ? working_ | changed.data : working_ & ~changed.data;
}

void TransportsDialog::ShowUsers(int row) {
    const CheckList::Row& shown = lvw_.Rows()[static_cast<std::size_t>(row)];
    const std::wstring users = UsersOf(shown.data);
    lblUsers_.SetCaption(users.empty() ? std::wstring() : Load(Id::TransportUsedBy) + users);
}

void TransportsDialog::OnOK() {
    model::Store(context_.root().AdvancedFormats().Item(index_), &model::AdvancedFormat::Transports, working_);
    confirmed_ = true;
    Close();
}

} // namespace

bool ChooseTransports(Context& context, std::int32_t index) {
    TransportsDialog dialog(context, index);
    context.runDialog(dialog);
    return dialog.Confirmed();
}

} // namespace orv::editor
