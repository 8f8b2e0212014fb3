#pragma once

#include "FileStore.h"

#include <QStringList>
#include <QUrl>
#include <QXmlStreamReader>

namespace mirror {

/// Reads the body of an answer to PROPFIND (RFC 4918, section 14.16), which may come in pieces cut
/// anywhere, and believes it only if there is no doubt: well-formed to its very last byte, without
/// a document type or entities of its own, naming the folder that was asked for, and besides it
/// only what stands directly in it. Addresses are compared by their paths, and none is ever
/// followed.
class ListingReader {
public:
    static constexpr qint64 maximumSize = 4LL * 1024 * 1024; ///< bytes

    explicit ListingReader(const QUrl& folder);

    /// The next piece. False once it is certain that the listing will not be believed.
    bool add(const QByteArray& piece);

    /// What stands in the folder, after the last piece. Nothing where that is in doubt.
    [[nodiscard]] std::optional<QList<FileEntry>> entries() const;

private:
    enum class State { Reading, Ended, Doubtful };

    /// What the answer says of one address.
    struct Response {
        QString href;
        FileEntry entry;
        bool isGood = true;
    };

    void read();
    void readToken(QXmlStreamReader::TokenType token);
    void start();
    void end();
    void endPropstat();
    void endResponse();
    [[nodiscard]] bool isAt(QLatin1String element) const { return m_path == element; }

    QUrl m_folder;
    QStringList m_folderSegments;
    QXmlStreamReader m_xml;
    State m_state = State::Reading;
    qint64 m_size = 0;
    QString m_path; // the open elements, parted by slashes, "*" for a foreign one
    int m_depth = 0; // their number
    QString m_text; // of the innermost element, since the last one in it
    QString m_status; // of the propstat that is open
    FileEntry m_properties; // of the same
    Response m_response;
    QList<FileEntry> m_entries;
    bool m_namesTheFolder = false;
};

} // namespace mirror
