#include "FakeActivity.h"

#include <utility>

FakeActivity::FakeActivity(ActivityType type)
    : m_type(std::move(type))
{
}

void FakeActivity::stop()
{
    ++stops;
    if (outcomeOfStop)
        Q_EMIT finished(*outcomeOfStop);
}
