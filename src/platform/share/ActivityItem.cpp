#include "ActivityItem.h"

#include <QStringList>

ActivityItem combined(const ActivityItems& items)
{
    ActivityItem all;
    QStringList texts;
    for (const ActivityItem& item : items) {
        texts.append(item.text);
        if (!all.excerpt)
            all.excerpt = item.excerpt;
    }
    all.text = texts.join(QLatin1String("\n\n"));
    return all;
}
