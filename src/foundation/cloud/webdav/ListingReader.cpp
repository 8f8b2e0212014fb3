#include "ListingReader.h"

#include "WebDavAddress.h"

namespace mirror {

namespace {

constexpr int deepestNesting = 32;

/// Servers and file systems differ in how they compose a letter with its accent.
QStringList composed(QStringList segments)
{
    for (QString& segment : segments)
        segment = segment.normalized(QString::NormalizationForm_C);
    return segments;
}

bool isSuccess(const QString& statusLine)
{
    const QString status = statusLine.simplified().section(QLatin1Char(' '), 1, 1);
    return status.size() == 3 && status.startsWith(QLatin1Char('2'));
}

std::optional<qint64> sizeOf(const QString& text)
{
    bool isNumber = false;
    const qint64 size = text.trimmed().toLongLong(&isNumber);
    return isNumber && size >= 0 ? std::optional(size) : std::nullopt;
}

} // namespace

ListingReader::ListingReader(const QUrl& folder)
    : m_folder(folder)
    , m_folderSegments(composed(pathSegments(folder).value_or(QStringList())))
{
}

bool ListingReader::add(const QByteArray& piece)
{
    m_size += piece.size();
    if (m_size > maximumSize)
        m_state = State::Doubtful;
    if (m_state == State::Ended && !piece.trimmed().isEmpty())
        m_state = State::Doubtful;
    if (m_state == State::Reading) {
        m_xml.addData(piece);
        read();
    }
    return m_state != State::Doubtful;
}

void ListingReader::read()
{
    while (m_state == State::Reading) {
        const QXmlStreamReader::TokenType token = m_xml.readNext();
        if (m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError)
            return; // the rest may come with the next piece
        readToken(token);
        if (m_depth > deepestNesting)
            m_state = State::Doubtful;
    }
}

void ListingReader::readToken(QXmlStreamReader::TokenType token)
{
    switch (token) {
    case QXmlStreamReader::StartElement:
        start();
        break;
    case QXmlStreamReader::EndElement:
        end();
        break;
    case QXmlStreamReader::Characters:
        m_text += m_xml.text();
        // No text may hold this, but across pieces it is not noticed.
        if (m_text.contains(QLatin1String("]]>")))
            m_state = State::Doubtful;
        break;
    case QXmlStreamReader::EndDocument:
        m_state = State::Ended;
        break;
    case QXmlStreamReader::StartDocument:
        break;
    case QXmlStreamReader::Comment:
    case QXmlStreamReader::ProcessingInstruction:
        // After the end a piece is not parsed, so what is allowed there must not depend on the
        // cuts.
        if (m_depth == 0)
            m_state = State::Doubtful;
        break;
    default: // broken, a document type, or an entity
        m_state = State::Doubtful;
    }
}

void ListingReader::start()
{
    const bool isDav = m_xml.namespaceUri() == QLatin1String("DAV:");
    m_path += QLatin1Char('/') + (isDav ? m_xml.name().toString() : QStringLiteral("*"));
    ++m_depth;
    m_text.clear();
    if (m_depth == 1 && !isAt(QLatin1String("/multistatus")))
        m_state = State::Doubtful;
    if (isAt(QLatin1String("/multistatus/response")))
        m_response = {};
    if (isAt(QLatin1String("/multistatus/response/propstat"))) {
        m_properties = {};
        m_status.clear();
    }
}

void ListingReader::end()
{
    if (isAt(QLatin1String("/multistatus/response/href")))
        m_response.href = m_text.trimmed();
    else if (isAt(QLatin1String("/multistatus/response/status")))
        m_response.isGood = isSuccess(m_text);
    else if (isAt(QLatin1String("/multistatus/response/propstat/status")))
        m_status = m_text;
    else if (isAt(QLatin1String("/multistatus/response/propstat/prop/getcontentlength")))
        m_properties.size = sizeOf(m_text);
    else if (isAt(QLatin1String("/multistatus/response/propstat/prop/resourcetype/collection")))
        m_properties.type = FileEntry::Type::Collection;
    else if (isAt(QLatin1String("/multistatus/response/propstat")))
        endPropstat();
    else if (isAt(QLatin1String("/multistatus/response")))
        endResponse();
    m_text.clear();
    m_path.truncate(m_path.lastIndexOf(QLatin1Char('/')));
    --m_depth;
}

void ListingReader::endPropstat()
{
    if (!isSuccess(m_status))
        return;
    if (m_properties.size)
        m_response.entry.size = m_properties.size;
    if (m_properties.type == FileEntry::Type::Collection)
        m_response.entry.type = FileEntry::Type::Collection;
}

void ListingReader::endResponse()
{
    const QUrl address = m_folder.resolved(QUrl(m_response.href));
    std::optional<QStringList> segments = pathSegments(address);
    const bool isUsable = m_response.isGood && !m_response.href.isEmpty() && address.isValid();
    if (!isUsable || !segments) {
        m_state = State::Doubtful;
        return;
    }
    FileEntry& entry = m_response.entry;
    if (entry.type == FileEntry::Type::Collection)
        entry.size.reset();
    if (composed(*segments) == m_folderSegments) {
        m_namesTheFolder |= entry.type == FileEntry::Type::Collection;
        return;
    }
    if (!segments->isEmpty())
        entry.name = segments->takeLast();
    if (composed(*segments) == m_folderSegments && !entry.name.isEmpty())
        m_entries.append(entry);
    else
        m_state = State::Doubtful;
}

std::optional<QList<FileEntry>> ListingReader::entries() const
{
    if (m_state != State::Ended || !m_namesTheFolder)
        return std::nullopt;
    return m_entries;
}

} // namespace mirror
