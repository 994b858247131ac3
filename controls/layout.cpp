#include "controls/layout.h"

#include <algorithm>
#include <numeric>

namespace orv::controls {
namespace {

constexpr int kScrollBar = 18;

bool Across(Grow grow) {
    return grow == Grow::Across || grow == Grow::Both;
}
bool Down(Grow grow) {
    return grow == Grow::Down || grow == Grow::Both;
}

class WidgetCell : public LayoutBox {
  public:
    WidgetCell(Widget& widget, Grow grow) : LayoutBox(Across(grow), Down(grow)), widget_(widget) {}
    Size Minimum(const TextMeasure& measure) const override { return widget_.MinimumSize(measure); }
    void Place(const Rect& area, const TextMeasure& measure) override {
        const Size least = Minimum(measure);
        const int width = growsAcross_ ? area.width : std::min(area.width, least.width);
        const int height = growsDown_ ? area.height : std::min(area.height, least.height);
        widget_.SetBounds({area.x, area.y + (area.height - height) / 2, width, height});
    }

  private:
    Widget& widget_;
};

class SpringBox : public LayoutBox {
  public:
    explicit SpringBox(Grow grow) : LayoutBox(Across(grow), Down(grow)) {}
    Size Minimum(const TextMeasure&) const override { return {}; }
    void Place(const Rect&, const TextMeasure&) override {}
};

class OverlayBox : public LayoutBox {
  public:
    explicit OverlayBox(std::vector<LayoutPtr> boxes) : LayoutBox(false, false), boxes_(std::move(boxes)) {
        for (const LayoutPtr& box : boxes_) {
            growsAcross_ = growsAcross_ || box->GrowsAcross();
            growsDown_ = growsDown_ || box->GrowsDown();
        }
    }
    Size Minimum(const TextMeasure& measure) const override {
        Size least;
        for (const LayoutPtr& box : boxes_) {
            const Size own = box->Minimum(measure);
            least = {std::max(least.width, own.width), std::max(least.height, own.height)};
        }
        return least;
    }
    void Place(const Rect& area, const TextMeasure& measure) override {
        for (const LayoutPtr& box : boxes_) {
            const Size own = box->Minimum(measure);
            box->Place({area.x, area.y, box->GrowsAcross() ? area.width : own.width,
                        box->GrowsDown() ? area.height : own.height},
                       measure);
        }
    }

  private:
    std::vector<LayoutPtr> boxes_;
};

class WhenBox : public LayoutBox {
  public:
    WhenBox(const bool& wanted, LayoutPtr box)
        : LayoutBox(box->GrowsAcross(), box->GrowsDown()), wanted_(wanted), box_(std::move(box)) {}
    Size Minimum(const TextMeasure& measure) const override { return wanted_ ? box_->Minimum(measure) : Size{}; }
    void Place(const Rect& area, const TextMeasure& measure) override {
        if (wanted_)
            box_->Place(area, measure);
    }

  private:
    const bool& wanted_;
    LayoutPtr box_;
};

class GroupBox : public LayoutBox {
  public:
    GroupBox(Frame& frame, LayoutPtr content, int padding)
        : LayoutBox(content->GrowsAcross(), content->GrowsDown()), frame_(frame), content_(std::move(content)),
          padding_(padding) {}
    Size Minimum(const TextMeasure& measure) const override {
        const Size inner = content_->Minimum(measure);
        const int padding = measure.Scale(padding_);
        const int caption = frame_.IsGroupBox() ? frame_.MinimumSize(measure).width + 2 * padding : 0;
        return {std::max(inner.width + 2 * padding, caption), inner.height + padding + Top(measure)};
    }
    void Place(const Rect& area, const TextMeasure& measure) override {
        const int padding = measure.Scale(padding_);
        frame_.SetBounds(area);
        content_->Place({padding, Top(measure), area.width - 2 * padding, area.height - padding - Top(measure)},
                        measure);
    }

  private:
    int Top(const TextMeasure& measure) const {
        return frame_.IsGroupBox() ? measure.LineHeight() + measure.Scale(4) : measure.Scale(padding_);
    }

    Frame& frame_;
    LayoutPtr content_;
    int padding_;
};

int Total(const std::vector<int>& sizes, int gap) {
    const int gaps = sizes.empty() ? 0 : gap * (static_cast<int>(sizes.size()) - 1);
    return std::accumulate(sizes.begin(), sizes.end(), gaps);
}

/// Shares `spare` among the tracks that grow, the odd pixels among the first of them.
void Share(std::vector<int>& sizes, const std::vector<bool>& grows, int spare) {
    int growing = static_cast<int>(std::count(grows.begin(), grows.end(), true));
    for (std::size_t i = 0; i < sizes.size() && spare > 0; ++i) {
        if (!grows[i])
            continue;
        const int part = (spare + growing - 1) / growing;
        --growing;
        sizes[i] += part;
        spare -= part;
    }
}

} // namespace

LayoutPtr Cell(Widget& widget, Grow grow) {
    return std::make_unique<WidgetCell>(widget, grow);
}

LayoutPtr Spring(Grow grow) {
    return std::make_unique<SpringBox>(grow);
}

Grid::Grid(std::size_t columns, int columnGap, int rowGap)
    : LayoutBox(false, false), columns_(columns), columnGap_(columnGap), rowGap_(rowGap) {}

Grid& Grid::Add(LayoutPtr box) {
    growsAcross_ = growsAcross_ || (box && box->GrowsAcross());
    growsDown_ = growsDown_ || (box && box->GrowsDown());
    boxes_.push_back(std::move(box));
    return *this;
}

void Grid::Measure(const TextMeasure& measure, Tracks& columns, Tracks& rows) const {
    columns = {std::vector<int>(columns_), std::vector<bool>(columns_)};
    rows = {std::vector<int>(RowCount()), std::vector<bool>(RowCount())};
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        if (!boxes_[i])
            continue;
        const std::size_t column = i % columns_;
        const std::size_t row = i / columns_;
        const Size least = boxes_[i]->Minimum(measure);
        columns.sizes[column] = std::max(columns.sizes[column], least.width);
        rows.sizes[row] = std::max(rows.sizes[row], least.height);
        columns.grows[column] = columns.grows[column] || boxes_[i]->GrowsAcross();
        rows.grows[row] = rows.grows[row] || boxes_[i]->GrowsDown();
    }
}

Size Grid::Minimum(const TextMeasure& measure) const {
    Tracks columns;
    Tracks rows;
    Measure(measure, columns, rows);
    return {Total(columns.sizes, measure.Scale(columnGap_)), Total(rows.sizes, measure.Scale(rowGap_))};
}

void Grid::Place(const Rect& area, const TextMeasure& measure) {
    Tracks columns;
    Tracks rows;
    Measure(measure, columns, rows);
    const int columnGap = measure.Scale(columnGap_);
    const int rowGap = measure.Scale(rowGap_);
    Share(columns.sizes, columns.grows, area.width - Total(columns.sizes, columnGap));
    Share(rows.sizes, rows.grows, area.height - Total(rows.sizes, rowGap));
    Rect place = area;
    for (std::size_t row = 0, i = 0; row < rows.sizes.size(); ++row) {
        place.x = area.x;
        place.height = rows.sizes[row];
        for (std::size_t column = 0; column < columns_ && i < boxes_.size(); ++column, ++i) {
            place.width = columns.sizes[column];
            if (boxes_[i])
                boxes_[i]->Place(place, measure);
            place.x += place.width + columnGap;
        }
        place.y += place.height + rowGap;
    }
}

LayoutPtr Column(std::vector<LayoutPtr> boxes, int gap) {
    auto grid = std::make_unique<Grid>(1, 0, gap);
    for (LayoutPtr& box : boxes)
        grid->Add(std::move(box));
    return grid;
}

LayoutPtr Row(std::vector<LayoutPtr> boxes, int gap) {
    auto grid = std::make_unique<Grid>(boxes.size(), gap, 0);
    for (LayoutPtr& box : boxes)
        grid->Add(std::move(box));
    return grid;
}

LayoutPtr When(const bool& wanted, LayoutPtr box) {
    return std::make_unique<WhenBox>(wanted, std::move(box));
}

LayoutPtr Overlay(std::vector<LayoutPtr> boxes) {
    return std::make_unique<OverlayBox>(std::move(boxes));
}

LayoutPtr Group(Frame& frame, LayoutPtr content, int padding) {
    return std::make_unique<GroupBox>(frame, std::move(content), padding);
}

void LayoutPage(Frame& page, LayoutBox& content, const TextMeasure& measure) {
    const Size least = content.Minimum(measure);
    page.SetContent(least, measure.Scale(kScrollBar));
    const Size view = page.View();
    const Size size{std::max(least.width, view.width), std::max(least.height, view.height)};
    content.Place({0, 0, size.width, size.height}, measure);
}

} // namespace orv::controls
