#include "GlobalModel.h"

#include "BuildConfiguration.h"

GlobalModel& GlobalModel::shared()
{
    static auto* const instance = new GlobalModel();
    return *instance;
}

GlobalModel::GlobalModel()
    : copyrightStr(QString::fromUtf8(buildConfiguration::copyright))
    , website(QString::fromUtf8(buildConfiguration::website))
    , websiteHelp(QString::fromUtf8(buildConfiguration::websiteHelp))
{
}
