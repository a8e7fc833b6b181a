#include "QtText.h"

namespace velmo::qt {

namespace {

constexpr char32_t StrayBase = 0xDC00;

bool IsContinuation(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

/// Bytes of the valid sequence at the start of `bytes`, which is not empty; 0 if there is none.
/// Overlong forms, surrogates and what lies beyond U+10FFFF are not valid (Unicode, table 3-7).
std::size_t SequenceLength(std::string_view bytes)
{
    const auto at = [&](std::size_t i) {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i])
                                : static_cast<unsigned char>(0);
    };
    const unsigned lead = at(0);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4 || !IsContinuation(at(1)))
        return 0;
    if (lead < 0xE0)
        return 2;
    const unsigned second = at(1);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F)
        || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)
        || !IsContinuation(at(2)))
        return 0;
    if (lead < 0xF0)
        return 3;
    return IsContinuation(at(3)) ? 4 : 0;
}

} // namespace

QString FromBytes(std::string_view bytes)
{
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    while (!bytes.empty()) {
        std::size_t valid = 0;
        while (valid < bytes.size()) {
            const std::size_t length = SequenceLength(bytes.substr(valid));
            if (length == 0)
                break;
            valid += length;
        }
        text += QString::fromUtf8(bytes.data(), static_cast<qsizetype>(valid));
        bytes.remove_prefix(valid);
        if (!bytes.empty()) {
            text += QChar(static_cast<char16_t>(StrayBase + static_cast<unsigned char>(bytes[0])));
            bytes.remove_prefix(1);
        }
    }
    return text;
}

std::string ToBytes(QStringView text)
{
    std::string bytes;
    qsizetype start = 0;
    const auto addUpTo = [&](qsizetype end) {
        bytes += text.mid(start, end - start).toUtf8().toStdString();
        start = end;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i; // a pair is a character beyond U+FFFF
            continue;
        }
        const char16_t unit = text[i].unicode();
        if (!text[i].isSurrogate())
            continue;
        addUpTo(i);
        if (unit >= StrayBase + 0x80 && unit <= StrayBase + 0xFF)
            bytes += static_cast<char>(unit - StrayBase);
        else
            bytes += "\xEF\xBF\xBD";
        ++start;
    }
    addUpTo(text.size());
    return bytes;
}

} // namespace velmo::qt
