#include "RecordState.h"

#include <algorithm>

namespace mirror {

namespace {

LiveRecord joinLive(const LiveRecord& left, const LiveRecord& right)
{
    return { std::min(left.content, right.content), std::max(left.renaming, right.renaming),
        join(left.unknown, right.unknown) };
}

DeadRecord joinDead(const DeadRecord& left, const DeadRecord& right)
{
    return { std::max(left.time, right.time), join(left.unknown, right.unknown) };
}

} // namespace

RecordState join(const RecordState& left, const RecordState& right)
{
    const auto* live = std::get_if<LiveRecord>(&left);
    const auto* otherLive = std::get_if<LiveRecord>(&right);
    if (live != nullptr && otherLive != nullptr)
        return joinLive(*live, *otherLive);
    if (live != nullptr)
        return right;
    if (otherLive != nullptr)
        return left;
    return joinDead(std::get<DeadRecord>(left), std::get<DeadRecord>(right));
}

} // namespace mirror
