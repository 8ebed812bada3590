// See Positions.h.
#include "Positions.h"

#include <utility>

namespace zelk {
namespace {

std::size_t lowestBit(std::size_t value)
{
    return value & (~value + 1);
}

} // namespace

Positions::Positions(std::vector<std::int64_t> keys)
    : m_keys(std::move(keys)), m_tree(m_keys.size() + 1), m_size(m_keys.size()), m_topStep(m_keys.empty() ? 0 : 1)
{
    for (std::size_t i = 1; i < m_tree.size(); ++i)
        m_tree[i] = static_cast<std::uint32_t>(lowestBit(i));
    while (m_topStep * 2 < m_tree.size() && m_topStep != 0)
        m_topStep *= 2;
}

std::optional<std::int64_t> Positions::keyAt(std::size_t position) const
{
    if (position >= m_size)
        return std::nullopt;
    return m_keys[slotAt(position)];
}

void Positions::erase(std::size_t position)
{
    for (std::size_t i = slotAt(position) + 1; i < m_tree.size(); i += lowestBit(i))
        --m_tree[i];
    --m_size;
}

std::size_t Positions::slotAt(std::size_t position) const
{
    std::size_t slot = 0;
    std::size_t before = position;
    for (std::size_t step = m_topStep; step != 0; step /= 2) {
        if (slot + step < m_tree.size() && m_tree[slot + step] <= before) {
            slot += step;
            before -= m_tree[slot];
        }
    }
    return slot;
}

} // namespace zelk
