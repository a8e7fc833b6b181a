#include "TagLibrary.h"

#include "core/RunError.h"

#include <cstdio>
#include <utility>

namespace velmo {

namespace {

std::string Copy(const char* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

} // namespace

TagLibrary::TagLibrary(ports::Libraries& libraries, std::string path)
    : m_libraries(libraries)
    , m_path(std::move(path))
{}

std::string TagLibrary::TAGS_Read(DWORD handle, const char* format)
{
    Load();
    return Copy(m_read(handle, format));
}

std::string TagLibrary::TAGS_ID3V1_Read(DWORD handle, const char* format)
{
    Load();
    return Copy(m_readV1(handle, format));
}

void TagLibrary::Load()
{
    if (m_library == nullptr)
        m_library = m_libraries.Open(m_path);
    if (m_library != nullptr && m_readV1 == nullptr) {
        m_read = reinterpret_cast<Call>(m_library->Symbol("TAGS_Read"));
        m_readV1 = reinterpret_cast<Call>(m_library->Symbol("TAGS_ID3V1_Read"));
    }
    if (m_read != nullptr && m_readV1 != nullptr)
        return;
    if (!m_missingReported)
        static_cast<void>(std::fprintf(stderr, "velmo: tag library missing: %s\n", m_path.c_str()));
    m_missingReported = true;
    throw RunError(RunError::FileNotFound, "File not found: " + m_path);
}

} // namespace velmo
