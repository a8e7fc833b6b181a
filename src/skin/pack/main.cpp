/// Makes the pack of the picture files, as a step of the build: skinpack FOLDER PACK.

#include "skin/PackFormat.h"
#include "skin/PixelCoding.h"

#include <QFile>
#include <QImage>

#include <array>
#include <cstring>
#include <vector>

namespace {

using velmo::skin::PackEntry;

class Pack
{
public:
    Pack() { m_bytes.resize(velmo::skin::PackEntryCount * sizeof(PackEntry)); }

    void Add(std::size_t place, const QImage& image, bool coded)
    {
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < image.height(); ++y) {
            const auto* const row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
            pixels.insert(pixels.end(), row, row + image.width());
        }
        PackEntry entry{.offset = static_cast<std::uint32_t>(m_bytes.size()),
                        .codedBytes = 0,
                        .width = static_cast<std::uint16_t>(image.width()),
                        .height = static_cast<std::uint16_t>(image.height())};
        if (coded) {
            const auto stream = velmo::skin::EncodePixels(pixels, entry.width);
            entry.codedBytes = static_cast<std::uint32_t>(stream.size());
            m_bytes.insert(m_bytes.end(), stream.begin(), stream.end());
        } else {
            const auto* const first = reinterpret_cast<const std::uint8_t*>(pixels.data());
            m_bytes.insert(m_bytes.end(), first, first + pixels.size() * sizeof pixels[0]);
        }
        m_bytes.resize((m_bytes.size() + 3) / 4 * 4);
        std::memcpy(&m_bytes[place * sizeof entry], &entry, sizeof entry);
    }

    bool WriteTo(const QString& path) const
    {
        QFile file(path);
        const auto size = static_cast<qint64>(m_bytes.size());
        return file.open(QIODevice::WriteOnly)
               && file.write(reinterpret_cast<const char*>(m_bytes.data()), size) == size
               && file.flush();
    }

private:
    std::vector<std::uint8_t> m_bytes;
};

bool AddAll(Pack& pack, const QString& folder)
{
    for (std::size_t list = 0; list < velmo::skin::PackedLists.size(); ++list) {
        const auto& [_, name, count] = velmo::skin::PackedLists[list];
        for (int index = 1; index <= count; ++index) {
            for (int scale = 1; scale <= velmo::skin::ScaleCount; ++scale) {
                const QString path = QStringLiteral("%1/%2/%3@%4x.png")
                                         .arg(folder,
                                              QLatin1String(name),
                                              QString::number(index),
                                              QString::number(scale));
                const QImage image = QImage(path).convertToFormat(QImage::Format_RGB32);
                if (image.isNull()) {
                    qCritical("skinpack: %s can't be read", qPrintable(path));
                    return false;
                }
                pack.Add(velmo::skin::PackPlace(list, index, scale), image, scale > 1);
            }
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        qCritical("skinpack FOLDER PACK");
        return 2;
    }
    Pack pack;
    if (!AddAll(pack, QFile::decodeName(argv[1])))
        return 1;
    if (!pack.WriteTo(QFile::decodeName(argv[2]))) {
        qCritical("skinpack: %s can't be written", argv[2]);
        return 1;
    }
    return 0;
}
