// Which record a position of the array last handed out means, after any number of removals.
#ifndef NETINFO_STATISTICS_POSITIONS_H
#define NETINFO_STATISTICS_POSITIONS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zelk {

/// Keys of records in order; finding and removing the n-th takes logarithmic time, wherever it lies, so that neither
/// emptying from the front nor removing here and there becomes quadratic.
class Positions
{
public:
    Positions() = default;
    explicit Positions(std::vector<std::int64_t> keys);

    std::size_t size() const { return m_size; }
    /// The key at a 0-based position; nothing when there are not so many.
    std::optional<std::int64_t> keyAt(std::size_t position) const;
    /// Takes the position out; later ones move up by one. The position must exist.
    void erase(std::size_t position);

private:
    std::size_t slotAt(std::size_t position) const;

    std::vector<std::int64_t> m_keys;
    std::vector<std::uint32_t> m_tree; ///< Binary indexed tree over the keys not yet removed; slot i is at i + 1.
    std::size_t m_size = 0;
    std::size_t m_topStep = 0; ///< Largest power of two not above the number of slots.
};

} // namespace zelk

#endif
