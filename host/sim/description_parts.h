#pragma once
// The text of a description file taken apart while it is read: each cluster, device, parameter and choice is handed out
// when it ends and then dropped, so that a large file is never in memory as one document.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace orv::sim {

/// What a value of the file is, by its place.
enum class Part { Other, System, Clusters, Cluster, Devices, Device, Parameters, Parameter, Choices, Choice };

/// Hears of the parts in the order in which they end.
class PartListener {
  public:
    virtual ~PartListener() = default;
    /// A list of parts begins; whatever came under the same key before counts no more.
    virtual void Begin(Part list) = 0;
    /// A part that stands in a list, with its JSON pointer.
    virtual void Take(Part part, const nlohmann::json& value, const std::string& place) = 0;
};

/// Reads `text`. Answers the document; of each list of parts it holds the first one only, so that the document's own
/// schema still applies. Raises FileError with the place: not JSON, nested too deep, or a part without measure.
nlohmann::json ReadParts(std::string_view text, std::string_view name, PartListener& listener);

} // namespace orv::sim
