#pragma once
// A tree of keyed nodes.
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "controls/widget.h"

namespace orv::controls {

class Tree : public Widget {
  public:
    struct Node {
        std::wstring key;
        std::wstring text;
        std::wstring parentKey; ///< empty at the top level
        bool bold = false;
        bool expanded = true;
    };

    explicit Tree(std::wstring name, int index = kNoIndex);

    /// While one lives the peer is not told of changes to the nodes; it is told once at the end.
    class Batch {
      public:
        explicit Batch(Tree& tree) : tree_(tree), inFlight_(std::uncaught_exceptions()) { ++tree_.batches_; }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        /// The peer may fail; that is dropped while another error is in flight.
        ~Batch() noexcept(false);

      private:
        Tree& tree_;
        int inFlight_;
    };

    /// What Clear takes away.
    struct Contents {
        std::vector<Node> nodes;
        std::wstring selectedKey;
        std::wstring revealKey;
    };

    /// Parents before their children, siblings in order. Nodes below a collapsed one are in the list all the same.
    const std::vector<Node>& Nodes() const { return nodes_; }
    void Clear() { Exchange({}); }
    /// All at once, without taking memory; answers what stood there.
    Contents Exchange(Contents contents);
    /// Adds behind the last sibling. Raises 5 for a key that is empty or taken, 9 for an unknown parent.
    void AddNode(const std::wstring& parentKey, std::wstring key, std::wstring text);
    /// Nothing for an unknown key.
    const Node* FindNode(const std::wstring& key) const;
    /// The ones below raise 9 for an unknown key.
    void SetText(const std::wstring& key, std::wstring text);
    void SetBold(const std::wstring& key, bool bold);
    void ClearBold();
    void SetExpanded(const std::wstring& key, bool expanded);
    /// Expands what hides the node and asks the peer to bring it into view.
    void Reveal(const std::wstring& key);
    void SetSelectedKey(const std::wstring& key);

    /// Empty when nothing is selected.
    const std::wstring& SelectedKey() const { return selectedKey_; }
    /// The node of the last Reveal, for the peer.
    const std::wstring& RevealKey() const { return revealKey_; }
    /// Depth of a node, 0 at the top level.
    int Level(const Node& node) const;
    /// Indices of the nodes that no collapsed ancestor hides.
    std::vector<std::size_t> Shown() const;

    /// Gesture: a click on the node, or a move to it with the keyboard. Selects it and raises onNodeClick.
    void Click(const std::wstring& key);
    /// Gestures. Collapsing takes a selection below to the node itself, as a click on it.
    void Collapse(const std::wstring& key);
    void Expand(const std::wstring& key);
    KeyOutcome HandleKey(const KeyEvent& key) override;
    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void(const Node&)> onNodeClick;
    std::function<void(const Node&)> onCollapse;

  private:
    Node& Require(const std::wstring& key);
    bool HasChildren(const Node& node) const;
    void ItemsChanged();
    KeyOutcome Step(int by);
    KeyOutcome GoLeft();
    KeyOutcome GoRight();

    std::vector<Node> nodes_;
    std::wstring selectedKey_;
    std::wstring revealKey_;
    int batches_ = 0;
};

} // namespace orv::controls
