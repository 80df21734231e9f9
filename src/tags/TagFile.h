#pragma once
#include <QString>
#include <array>
#include <cstdint>

// One media file as the tag readers see it: sized, read at offsets, the first 4 KiB kept after
// the first look so that the MPEG header, the ID3v2 search and short tags share one read.
// Can also stand over bytes in memory (fuzzing, tests).
class TagFile {
public:
    static constexpr qint64 HeadSize = 4096;

    TagFile() = default;
    ~TagFile() { close(); }
    TagFile(const TagFile&) = delete;
    TagFile& operator=(const TagFile&) = delete;

    // False when the file cannot be opened; errno tells why.
    bool open(const QString& filename, bool writable = false);
    void openMemory(const uint8_t* data, size_t size);
    void close();
    bool isOpen() const { return m_fd >= 0 || m_mem != nullptr; }
    qint64 size() const { return m_size; }

    // Bytes read at the 0-based offset: fewer at the end of the file, -1 on an error.
    qint64 readAt(qint64 offset, void* dst, qint64 count);
    bool writeAt(qint64 offset, const void* src, qint64 count);

private:
    int m_fd = -1;
    const uint8_t* m_mem = nullptr;
    qint64 m_size = 0;
    qint64 m_headLength = -1; // -1: not read yet
    std::array<uint8_t, HeadSize> m_head{};
};
