#include "MirrorText.h"

namespace mirror {

namespace {

bool continuesCharacter(char byte) { return (static_cast<uchar>(byte) & 0xc0U) == 0x80U; }

} // namespace

Text Text::of(QStringView text)
{
    QByteArray utf8 = text.toUtf8();
    if (utf8.size() > MaxBytes) {
        qsizetype end = MaxBytes;
        while (continuesCharacter(utf8[end]))
            --end;
        utf8.truncate(end);
    }
    return Text(utf8);
}

std::optional<Text> Text::fromUtf8(QByteArrayView utf8)
{
    if (utf8.size() > MaxBytes || !QUtf8StringView(utf8.data(), utf8.size()).isValidUtf8())
        return std::nullopt;
    return Text(utf8.toByteArray());
}

} // namespace mirror
