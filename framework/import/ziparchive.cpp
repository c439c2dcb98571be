#include "framework/import/ziparchive.h"

#include <QFile>
#include <minizip/unzip.h>

namespace fw {

namespace {

// The entry the archive stands on, as a sequential device.
class ZipEntryDevice : public QIODevice
{
public:
    explicit ZipEntryDevice(unzFile handle)
        : m_handle(handle)
    {
        setOpenMode(QIODevice::ReadOnly);
    }
    ~ZipEntryDevice() override { ZipEntryDevice::close(); }

    bool isSequential() const override { return true; }

    void close() override
    {
        if (isOpen())
            unzCloseCurrentFile(m_handle);
        QIODevice::close();
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const auto wanted = static_cast<unsigned>(std::min<qint64>(maxSize, 1 << 30));
        const int read = unzReadCurrentFile(m_handle, data, wanted);
        if (read < 0) {
            setErrorString(QStringLiteral("zip %1").arg(read));
            return -1;
        }
        return read;
    }

    qint64 writeData(const char *, qint64) override { return -1; }

private:
    unzFile m_handle;
};

} // namespace

ZipArchive::~ZipArchive()
{
    if (m_handle)
        unzClose(m_handle);
}

bool ZipArchive::open(const QString &path)
{
    m_handle = unzOpen64(QFile::encodeName(path).constData());
    return m_handle != nullptr;
}

std::unique_ptr<QIODevice> ZipArchive::openEntry(const QString &name)
{
    constexpr int IgnoreCase = 2;
    if (!m_handle || name.isEmpty() || unzLocateFile(m_handle, name.toUtf8().constData(), IgnoreCase) != UNZ_OK
        || unzOpenCurrentFile(m_handle) != UNZ_OK)
        return nullptr;
    return std::make_unique<ZipEntryDevice>(m_handle);
}

} // namespace fw
