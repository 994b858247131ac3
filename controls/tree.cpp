#include "controls/tree.h"

#include <algorithm>

#include "text/error.h"

namespace orv::controls {

Tree::Tree(std::wstring name, int index) : Widget(Kind::Tree, std::move(name), index) {
    SetTabStop(true);
}

Tree::Batch::~Batch() noexcept(false) {
    if (--tree_.batches_ > 0)
        return;
    try {
        tree_.Mirror(Aspect::Items);
        tree_.Mirror(Aspect::Selection);
    } catch (...) {
        if (std::uncaught_exceptions() == inFlight_)
            throw;
    }
}

void Tree::ItemsChanged() {
    if (batches_ == 0)
        Mirror(Aspect::Items);
}

Tree::Contents Tree::Exchange(Contents contents) {
    nodes_.swap(contents.nodes);
    selectedKey_.swap(contents.selectedKey);
    revealKey_.swap(contents.revealKey);
    ItemsChanged();
    return contents;
}

void Tree::AddNode(const std::wstring& parentKey, std::wstring key, std::wstring text) {
    if (key.empty() || FindNode(key))
        throw Error(error_number::kInvalidArgument);
    auto place = nodes_.end();
    if (!parentKey.empty()) {
        const Node& parent = Require(parentKey);
        place = nodes_.begin() + (&parent - nodes_.data()) + 1;
        const int level = Level(parent);
        while (place != nodes_.end() && Level(*place) > level) // behind all that stands below the parent
            ++place;
    }
    nodes_.insert(place, Node{std::move(key), std::move(text), parentKey});
    ItemsChanged();
}

const Tree::Node* Tree::FindNode(const std::wstring& key) const {
    const auto found = std::find_if(nodes_.begin(), nodes_.end(), [&](const Node& node) { return node.key == key; });
    return found == nodes_.end() ? nullptr : &*found;
}

Tree::Node& Tree::Require(const std::wstring& key) {
    if (const Node* node = FindNode(key))
        return const_cast<Node&>(*node);
    throw Error(error_number::kSubscript);
}

void Tree::SetText(const std::wstring& key, std::wstring text) {
    Require(key).text = std::move(text);
    ItemsChanged();
}

void Tree::SetBold(const std::wstring& key, bool bold) {
    Require(key).bold = bold;
    ItemsChanged();
}

void Tree::ClearBold() {
    for (Node& node : nodes_)
        node.bold = false;
    ItemsChanged();
}

void Tree::SetExpanded(const std::wstring& key, bool expanded) {
    Require(key).expanded = expanded;
    ItemsChanged();
}

void Tree::Reveal(const std::wstring& key) {
    for (std::wstring parent = Require(key).parentKey; !parent.empty(); parent = Require(parent).parentKey)
        if (!Require(parent).expanded)
            SetExpanded(parent, true);
    revealKey_ = key;
    Mirror(Aspect::Reveal);
}

void Tree::SetSelectedKey(const std::wstring& key) {
    selectedKey_ = Require(key).key;
    if (batches_ == 0)
        Mirror(Aspect::Selection);
}

int Tree::Level(const Node& node) const {
    int level = 0;
    for (const Node* parent = FindNode(node.parentKey); parent; parent = FindNode(parent->parentKey))
        ++level;
    return level;
}

std::vector<std::size_t> Tree::Shown() const {
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const Node* parent = FindNode(nodes_[i].parentKey);
        while (parent && parent->expanded)
            parent = FindNode(parent->parentKey);
        if (!parent)
            shown.push_back(i);
    }
    return shown;
}

bool Tree::HasChildren(const Node& node) const {
    return std::any_of(nodes_.begin(), nodes_.end(), [&](const Node& other) { return other.parentKey == node.key; });
}

void Tree::Click(const std::wstring& key) {
    if (!Interactive() || !FindNode(key))
        return;
    SetSelectedKey(key);
    // The handler may rebuild the tree under the node it is told of.
    const Node clicked = *FindNode(key);
    if (onNodeClick)
        onNodeClick(clicked);
}

void Tree::Collapse(const std::wstring& key) {
    const Node* node = FindNode(key);
    if (!Interactive() || !node || !node->expanded)
        return;
    SetExpanded(key, false);
    const Node collapsed = *FindNode(key);
    for (const Node* above = FindNode(selectedKey_); above; above = FindNode(above->parentKey)) {
        if (above->parentKey == key) {
            Click(key);
            break;
        }
    }
    if (onCollapse)
        onCollapse(collapsed);
}

void Tree::Expand(const std::wstring& key) {
    if (Interactive() && FindNode(key))
        SetExpanded(key, true);
}

KeyOutcome Tree::Step(int by) {
    const std::vector<std::size_t> shown = Shown();
    if (shown.empty())
        return KeyOutcome::Handled;
    int position = -1;
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (nodes_[shown[i]].key == selectedKey_)
            position = static_cast<int>(i);
    const int last = static_cast<int>(shown.size()) - 1;
    const int next = std::clamp(position < 0 ? 0 : position + std::clamp(by, -last - 1, last + 1), 0, last);
    if (next != position) {
        const std::wstring key = nodes_[shown[static_cast<std::size_t>(next)]].key;
        Click(key);
        if (FindNode(key))
            Reveal(key);
    }
    return KeyOutcome::Handled;
}

KeyOutcome Tree::GoLeft() {
    const Node* node = FindNode(selectedKey_);
    if (node && node->expanded && HasChildren(*node))
        Collapse(std::wstring(node->key));
    else if (node && !node->parentKey.empty())
        Click(std::wstring(node->parentKey));
    return KeyOutcome::Handled;
}

KeyOutcome Tree::GoRight() {
    const Node* node = FindNode(selectedKey_);
    if (!node || !HasChildren(*node))
        return KeyOutcome::Handled;
    if (node->expanded)
        return Step(1);
    Expand(std::wstring(node->key));
    return KeyOutcome::Handled;
}

KeyOutcome Tree::HandleKey(const KeyEvent& key) {
    constexpr int kAll = 1 << 20;
    constexpr int kPage = 10;
    if (key.ctrl || key.alt)
        return KeyOutcome::NotHandled;
    switch (key.key) {
    case Key::Up:
        return Step(-1);
    case Key::Down:
        return Step(1);
    case Key::PageUp:
        return Step(-kPage);
    case Key::PageDown:
        return Step(kPage);
    case Key::Home:
        return Step(-kAll);
    case Key::End:
        return Step(kAll);
    case Key::Left:
        return GoLeft();
    case Key::Right:
        return GoRight();
    default:
        return KeyOutcome::NotHandled;
    }
}

Size Tree::MinimumSize(const TextMeasure& measure) const {
    return {measure.Scale(120), 4 * (measure.LineHeight() + measure.Scale(2))};
}

} // namespace orv::controls
