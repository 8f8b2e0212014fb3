#pragma once

#include <QString>

/// The description of a bill while it is being typed.
class DescriptionBuffer {
public:
    [[nodiscard]] const QString& text() const { return m_text; }
    /// What is stored: an empty field stands for "Bill". Blanks are kept as typed.
    [[nodiscard]] QString textOrDefault() const;
    /// Why the last text was not taken; empty where it was.
    [[nodiscard]] const QString& notice() const { return m_notice; }

    /// Starts with a text that is known to fit.
    void reset(const QString& text = {});
    /// Takes a text as one line, or leaves the old one where it is too long. True where the text
    /// or the notice is another one now, or where the field must show another text than it does.
    bool edit(const QString& typed);

private:
    QString m_text;
    QString m_notice;
};
