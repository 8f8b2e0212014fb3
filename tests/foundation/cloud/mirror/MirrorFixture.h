#pragma once

#include "RecordFile.h"

// Records of a small schema, and what is needed to state claims about them briefly.

/// An attribute of every kind; "title" is the renamable text.
[[nodiscard]] const mirror::RecordSchema& noteSchema();

/// The attributes of a note; what is not given is zero, false or null.
struct Note {
    double amount = 0;
    qint32 count = 0;
    bool done = false;
    std::optional<qint64> stamp = std::nullopt; ///< milliseconds since 1970
    std::optional<QString> place = std::nullopt;
};

/// In the order of the schema.
[[nodiscard]] mirror::Values valuesOf(const Note& note);
[[nodiscard]] mirror::Attributes attributesOf(const Note& note);

[[nodiscard]] mirror::HybridTime timeAt(qint64 milliseconds, qint64 counter = 0);

/// The identity with that number in its last digits.
[[nodiscard]] QUuid identity(quint32 number);

[[nodiscard]] mirror::LiveRecord liveNote(const Note& note, const QString& title);
[[nodiscard]] mirror::DeadRecord deadNote(qint64 milliseconds);

/// What of the members of that JSON object the program does not know.
[[nodiscard]] mirror::UnknownKeys unknownKeys(const QByteArray& object);

[[nodiscard]] mirror::FileOrigin someOrigin();

/// The lines of a file, each with its line end, the header among them.
[[nodiscard]] QByteArray fileOf(const QByteArray& header, const QByteArrayList& lines);
/// A header of the notes that promises so many lines.
[[nodiscard]] QByteArray noteHeader(qint64 lines);
