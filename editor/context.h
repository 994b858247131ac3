#pragma once
// What pages share with the shell.
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "controls/dialog.h"
#include "controls/form.h"
#include "device/device_state.h"
#include "device/parameter_access.h"
#include "editor/commands.h"
#include "model/out_format_config.h"
#include "model/tool_items.h"
#include "platform/guarded.h"

namespace orv::editor {

struct Context {
    static constexpr std::wstring_view kOwner = L"AddOnControl.";

    device::DeviceState& state;
    Commands& commands;
    /// Both raise 91 when there is none. What they answer stays while a handler runs.
    std::function<model::OutFormatConfig&()> root;
    std::function<model::ToolItems&()> catalogue;
    controls::Form& form;
    std::function<void()> changed;      ///< the user changed something
    std::function<void()> rebuildTree;  ///< the set of nodes changed
    std::function<void()> refreshStrip; ///< what the page says of its object may be another
    /// Another text for a node, where there is one; the page's caption is the page's own business.
    std::function<void(const std::wstring& key, const std::wstring& text)> setNodeText;
    /// Selects the node whose object the page shows now, without a click on it. Nothing for an unknown key.
    std::function<void(const std::wstring& key)> selectNode;
    std::function<void(const std::wstring& caption)> setCaption; ///< of the page shown
    /// Opens another node's page from a field that refers to it; the node left behind is marked until the next click.
    std::function<void(const std::wstring& key)> jumpTo;
    std::function<void()> layOut; ///< labels changed, or what is visible
    /// Says in the hint line why a value was not taken, until the focus moves or something changes.
    std::function<void(const std::wstring& reason)> refuse;
    controls::DialogRunner runDialog;

    /// Window of a widget, for host calls that want one; 0 when there is none.
    std::function<device::WindowHandle(const controls::Widget&)> windowOf;
    std::shared_ptr<int> alive = std::make_shared<int>(0);
    /// A handler failed since the tree was built: what it changed may not be shown yet.
    mutable bool doubtful = false;

    /// A plain box that opens later, kept where there is room without memory. One is enough: a second failure before
    /// the first was told has nothing new to say. Each editor has its own, since another's may be on another thread.
    struct LateBox {
        std::array<wchar_t, 512> text{};
        std::array<wchar_t, 64> title{};
        platform::MessageBoxes* boxes = nullptr; ///< null while nothing waits
    };
    mutable LateBox late{};

    device::ParameterAccess Access() const { return device::ParameterAccess(state); }

    /// Runs an event's handler; a failure is shown under "AddOnControl." and `name`.
    template <typename Action>
    bool Handle(const platform::HandlerName& name, Action&& action) const {
        const Restoring left([&host = commands] { host.LeaveHandler(); });
        commands.EnterHandler();
        return Sure(platform::Guarded(state.platform.boxes, name.Of(kOwner), std::forward<Action>(action)));
    }

    /// The same for one by which the user changes something: marked as modified when it ran to its end.
    template <typename Action>
    bool Edit(const platform::HandlerName& name, Action&& action) const {
        return Handle(name, [&] {
            action();
            changed();
        });
    }

    /// The same for a handler that runs inside a change of focus, where no box may open: it opens afterwards.
    template <typename Action>
    bool HandleInFocusChange(const platform::HandlerName& name, Action&& action) const {
        const Restoring left([&host = commands] { host.LeaveHandler(); });
        commands.EnterHandler();
        LaterBoxes boxes(state.platform, late);
        return Sure(platform::Guarded(boxes, name.Of(kOwner), std::forward<Action>(action)));
    }

    /// Runs `action` once the present message has been dealt with, unless the editor is gone by then.
    template <typename Action>
    void Later(Action action) const {
        state.platform.pump.Post([still = std::weak_ptr<int>(alive), action = std::move(action)] {
            if (!still.expired())
                action();
        });
    }

    bool Sure(bool ran) const {
        doubtful = doubtful || !ran;
        return ran;
    }

    class LaterBoxes : public platform::MessageBoxes {
      public:
        LaterBoxes(platform::Services& services, LateBox& late) : services_(services), late_(late) {}
        platform::Answer Show(const platform::MessageBox& box) override {
            services_.pump.Post([&boxes = services_.boxes, box] { boxes.Show(box); });
            return platform::Answer::Ok;
        }
        void ShowPlain(const wchar_t* text, const wchar_t* title) noexcept override;
        void Beep() override { services_.boxes.Beep(); }
        void Close() override {}

      private:
        platform::Services& services_;
        LateBox& late_;
    };
};

} // namespace orv::editor
