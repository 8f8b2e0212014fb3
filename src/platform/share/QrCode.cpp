#include "QrCode.h"

#include <qrencode.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr unsigned utf8Designator = 26; // of the extended channel interpretations

struct FreeInput {
    void operator()(QRinput* input) const { QRinput_free(input); }
};

struct FreeCode {
    void operator()(QRcode* code) const { QRcode_free(code); }
};

bool isAscii(const QByteArray& bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char byte) { return byte >= 0; });
}

} // namespace

QrCode::QrCode(int side, std::vector<bool> modules)
    : m_side(side)
    , m_modules(std::move(modules))
{
}

std::optional<QrCode> QrCode::encode(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const std::unique_ptr<QRinput, FreeInput> input(QRinput_new2(0, QR_ECLEVEL_M));
    // Readers guess what bytes beyond ASCII mean, unless they are told.
    if (!input || (!isAscii(bytes) && QRinput_appendECIheader(input.get(), utf8Designator) != 0))
        return std::nullopt;
    const auto* const data = reinterpret_cast<const unsigned char*>(bytes.constData());
    if (QRinput_append(input.get(), QR_MODE_8, static_cast<int>(bytes.size()), data) != 0)
        return std::nullopt;
    const std::unique_ptr<QRcode, FreeCode> code(QRcode_encodeInput(input.get()));
    if (!code)
        return std::nullopt;

    const auto count
        = static_cast<std::size_t>(code->width) * static_cast<std::size_t>(code->width);
    std::vector<bool> modules(count);
    for (std::size_t i = 0; i < count; ++i)
        modules[i] = (code->data[i] & 1U) != 0; // the other bits tell what a module is for
    return QrCode(code->width, std::move(modules));
}

bool QrCode::isDark(int row, int column) const
{
    return m_modules[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_side)
        + static_cast<std::size_t>(column)];
}
