#include "PrintActivity.h"

#include "ActivityTypes.h"
#include "PdfDocument.h"
#include "PortalInterface.h"
#include "PortalRequest.h"
#include "PortalWindow.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QLocale>
#include <QSizeF>

#include <algorithm>
#include <sys/mman.h>

namespace {

/// The paper that the user chose for the printer; the usual one where nothing is said of it.
QPageLayout pageFrom(const QVariant& setup)
{
    QPageLayout page = usualPage(QLocale::system());
    const auto values = qdbus_cast<QVariantMap>(setup);
    const QSizeF size(values.value(QStringLiteral("Width")).toDouble(),
        values.value(QStringLiteral("Height")).toDouble());
    if (size.width() > 0.0 && size.height() > 0.0) {
        const double margin = std::min(page.margins().left(), size.width() / 8.0);
        page.setPageSize(QPageSize(size, QPageSize::Millimeter));
        page.setMargins({ margin, margin, margin, margin });
    }
    if (values.value(QStringLiteral("Orientation")).toString().endsWith(QLatin1String("landscape")))
        page.setOrientation(QPageLayout::Landscape);
    return page;
}

/// A file of memory that holds the document; not open where there is no memory for it.
bool openInMemory(QFile& file, const QByteArray& document)
{
    const int descriptor = memfd_create("print", MFD_CLOEXEC);
    return descriptor >= 0
        && file.open(
            descriptor, QIODevice::ReadWrite | QIODevice::Unbuffered, QFile::AutoCloseHandle)
        && file.write(document) == document.size() && file.seek(0);
}

} // namespace

QString PrintActivity::interface() { return QStringLiteral("org.freedesktop.portal.Print"); }

ActivityType PrintActivity::activityType() const { return activityType::print; }

void PrintActivity::ask(const ActivityItem&)
{
    whenPortalHas(interface(), this, [this] { Q_EMIT available(); });
}

void PrintActivity::perform(const ActivityItem& item)
{
    m_text = item.text;
    m_request = new PortalRequest(this);
    connect(m_request, &PortalRequest::finished, this,
        [this](PortalRequest::Outcome outcome, const QVariantMap& choices) {
            if (outcome == PortalRequest::Done)
                print(choices);
            else if (outcome == PortalRequest::Cancelled)
                finishCancelled();
            else
                fail();
        });
    m_request->call(interface(), QStringLiteral("PreparePrint"),
        { parentWindowForPortal(), title(), QVariantMap(), QVariantMap() }, {});
}

/// The second request: what is printed, as the user chose in the first.
void PrintActivity::print(const QVariantMap& choices)
{
    QFile pdf;
    const QPageLayout page = pageFrom(choices.value(QStringLiteral("page-setup")));
    if (!openInMemory(pdf, pdfOf(m_text, page))) {
        fail();
        return;
    }
    m_request = new PortalRequest(this);
    connect(m_request, &PortalRequest::finished, this, [this](PortalRequest::Outcome outcome) {
        if (outcome == PortalRequest::Done)
            finish();
        else if (outcome == PortalRequest::Cancelled)
            finishCancelled();
        else
            fail();
    });
    QVariantMap options;
    const QString token = QStringLiteral("token"); // without it the user is asked again
    m_isHandedOver = choices.contains(token);
    if (m_isHandedOver)
        options.insert(token, choices.value(token));
    m_request->call(interface(), QStringLiteral("Print"),
        { parentWindowForPortal(), title(),
            QVariant::fromValue(QDBusUnixFileDescriptor(pdf.handle())) },
        options);
}

void PrintActivity::stop()
{
    if (m_isHandedOver)
        finish();
    else if (m_request)
        m_request->withdraw();
}

void PrintActivity::fail() { finishFailed(tr("The desktop did not print.")); }
