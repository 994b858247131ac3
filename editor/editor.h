#pragma once
// The editor inside the control: shell, pages and all their behaviour.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/dialog.h"
#include "controls/form.h"
#include "controls/geometry.h"
#include "controls/widget.h"
#include "device/device_state.h"
#include "editor/commands.h"
#include "model/out_format_config.h"
#include "model/tool_items.h"

namespace orv::editor {

class Guide;
class Page;
class Shell;
struct Context;
enum class NodeKind;

class Editor {
  public:
    /// Asked for anew by each handler, so that the root may be replaced or go. Raises 91 when there is none.
    using RootAccess = std::function<model::OutFormatConfig&()>;
    using CatalogueAccess = std::function<model::ToolItems&()>;

    /// `state` and `commands` outlive the editor. Reads nothing.
    Editor(device::DeviceState& state, RootAccess root, CatalogueAccess catalogue, Commands& commands);
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    controls::Form& Form() { return form_; }
    controls::Widget& Root() { return form_.Root(); }

    /// Window of `picBottom`, handed to the host's support object before a save. Without it 0 is handed over.
    std::function<device::WindowHandle()> bottomPanelWindow;

    /// Windows of edit boxes, handed to the host when one gets the focus. Without it the host is not told.
    std::function<device::WindowHandle(const controls::Widget&)> windowOf;

    /// Shows dialogs. Without it they count as cancelled at once.
    controls::DialogRunner runDialog;

    /// Makes the page `fraCodeDef` visible, without filling it.
    void ShowFirstPage();
    /// Rebuilds the tree from the model; the selected node stays selected when its key is still there.
    void BuildTree();
    /// Selects the tree's first node and runs the handling of a click on it.
    void SelectFirstNode();
    /// Stores the flag and sets the enabled state of `cmdOK` and `cmdApply` to it.
    void SetModified(bool modified);
    bool Modified() const { return modified_; }
    bool NoInteractive() const;
    /// Stores what is still being typed. False when a handler failed; it has shown its error, the value stays pending.
    bool CommitPending();
    void SetDesignFlag(bool flag);
    /// Hint line after a save: how far a failed one got, nothing after a complete one.
    void SetSaveReport(const SaveReport& report);
    /// Remembers the current target as the one that the values were read from; refreshes the device line.
    void ValuesRead();
    /// Shows cluster, device and level, and the warning strip when the current device is another than the one read.
    void RefreshDeviceLine();
    /// The values are being read anew: nothing can be edited until ValuesRead.
    void ValuesLost();
    /// The access level is another than the one that the values were read under.
    bool LevelDiffers() const;
    /// The host has turned to another device than the one that was read.
    bool DeviceDiffers() const;
    /// Opens the selected node's page anew, its fields set up again; nothing before the values were read. What is being
    /// typed is stored first; where that fails, and while another device is current, the page is shown as it is.
    void Reopen();
    /// Lays everything out; again on each change of size or font. `measure` is
    /// kept until the next call, for pages that change their labels.
    void Layout(controls::Size client, const controls::TextMeasure& measure);
    /// UserControl_Resize: Layout, its failures shown.
    void Resize(controls::Size client, const controls::TextMeasure& measure);

  private:
    std::unique_ptr<Context> MakeContext();
    void AddPages();
    void BindShell();
    void OnApply();
    void OnOK();
    void OnReadAgain();
    bool ValidateBeforeSave();
    /// Null when all was stored, else the first page on which something was not.
    Page* CommitPages();
    /// Stores what is still being typed, or shows the field that keeps it.
    bool CommitOrShow();
    void ShowPending(Page& page);
    /// The page of this node is the one that is shown.
    void ShownIs(const std::wstring& key);
    void RefreshStrip();
    void ShowStrips(const std::vector<std::wstring>& strips);
    void AddNodes();
    void OnNodeClick(const std::wstring& key);
    /// A number that may not stand where it stands keeps its page: leaving would drop what was typed.
    bool StaysForWrongNumber();
    void JumpTo(const std::wstring& key);
    void SelectNode(const std::wstring& key);
    void ShowNode(const std::wstring& key);
    void ShowPage(const controls::Widget& frame);
    Page& PageOf(NodeKind kind);
    void Refuse(const std::wstring& reason);
    void ShowHint();
    void LayoutPages();
    void LayOutPage(Page& page);

    device::DeviceState& state_;
    RootAccess root_;
    CatalogueAccess catalogue_;
    Commands& commands_;
    controls::Form form_;
    std::unique_ptr<Context> context_;
    std::unique_ptr<Shell> shell_;
    std::unique_ptr<Guide> guide_;
    std::vector<std::unique_ptr<Page>> pages_;
    bool modified_ = false;
    device::Target readFrom_;
    bool hasRead_ = false;
    std::wstring saveReport_;
    std::wstring refusal_;
    std::wstring shownKey_; ///< node whose page is shown
    const controls::TextMeasure* measure_ = nullptr;
    controls::Rect pageArea_;
};

} // namespace orv::editor
