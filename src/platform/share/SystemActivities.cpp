#include "SystemActivities.h"

#include "CopyActivity.h"
#include "CopyExcerptActivity.h"
#include "EmailActivity.h"
#include "PrintActivity.h"
#include "QrCodeActivity.h"
#include "SavePdfActivity.h"
#include "SaveTextActivity.h"
#include "TextMessageActivity.h"

Activities systemActivities()
{
    return {
        std::make_shared<CopyActivity>(),
        std::make_shared<CopyExcerptActivity>(),
        std::make_shared<QrCodeActivity>(),
        std::make_shared<EmailActivity>(),
        std::make_shared<TextMessageActivity>(),
        std::make_shared<SaveTextActivity>(),
        std::make_shared<PrintActivity>(),
        std::make_shared<SavePdfActivity>(),
    };
}
