#pragma once

#include <QIODevice>
#include <QString>
#include <memory>

namespace fw {

// A zip file opened read-only with zlib's minizip, the library the XLSX writer already brings:
// QuaZip carries its own altered copy of minizip under the same symbol names, and one process
// cannot hold both. Each entry is inflated as it is read, so that a large one never sits whole
// in memory.
class ZipArchive
{
public:
    ZipArchive() = default;
    ~ZipArchive();
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    bool open(const QString &path);
    // The entry of that name (any case, as Excel treats them), open for reading; null when
    // there is none or it cannot be inflated. One entry at a time: the device must go before
    // the next is opened.
    std::unique_ptr<QIODevice> openEntry(const QString &name);

private:
    void *m_handle = nullptr;
};

} // namespace fw
