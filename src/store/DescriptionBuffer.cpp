#include "DescriptionBuffer.h"

#include "Formatting.h"
#include "Item.h"

#include <QCoreApplication>

QString DescriptionBuffer::textOrDefault() const { return m_text.isEmpty() ? strBill() : m_text; }

void DescriptionBuffer::reset(const QString& text)
{
    m_text = text;
    m_notice.clear();
}

bool DescriptionBuffer::edit(const QString& typed)
{
    // The field shows the text that stands here: nothing was typed.
    if (typed == m_text)
        return false;
    const std::optional<QString> text = Item::refFromText(typed);
    m_text = text.value_or(m_text);
    m_notice = text ? QString()
                    : QCoreApplication::translate("DescriptionBuffer", "Description too long");
    return true;
}
