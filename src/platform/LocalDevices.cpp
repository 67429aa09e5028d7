#include "LocalDevices.h"

#include "store/StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>


#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Bytes read and written between two looks at the progress and the Cancel button.
constexpr qint64 kChunk = 4 * 1024 * 1024;

bool isNetwork(const QByteArray &type)
{
    static const QList<QByteArray> network = {"nfs", "nfs4", "cifs", "smb3", "smbfs", "fuse.sshfs", "davfs",
                                              "fuse.gvfsd-fuse"};
    return network.contains(type);
}

/// Where the system mounts media a breeder plugs in.
bool isRemovablePlace(const QString &root)
{
    return root.startsWith(u"/media/"_s) || root.startsWith(u"/run/media/"_s) || root.startsWith(u"/mnt/"_s);
}

[[noreturn]] void failCopy(const QString &destination, const QFile &file)
{
    if (file.error() == QFileDevice::ResourceError)
        throw StoreError(StoreError::DiskFull, u"There is not enough space on the disk."_s);
    throw StoreError(StoreError::CannotOpenFile,
                     u"The copy '%1' cannot be written (%2)."_s.arg(destination, file.errorString()));
}

} // namespace

QList<Volume> LocalDevices::volumes()
{
    QList<Volume> found;
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady())
            continue;
        const QString root = volume.rootPath();
        if (!isRemovablePlace(root) && !isNetwork(volume.fileSystemType()))
            continue;
        found << Volume{volume.displayName(), root};
    }
    return found;
}

Space LocalDevices::space(const QString &folder)
{
    // A drive name kept from an older installation ("A:") is no place on this machine: there
    // is no medium to write to, which is not the same as a folder that has gone.
    if (!QDir::isAbsolutePath(folder))
        return {};
    const QFileInfo place(folder);
    if (!place.exists() || !place.isDir())
        throw StoreError(StoreError::FileNotFound, u"The folder '%1' does not exist."_s.arg(folder));
    if (!place.isReadable())
        throw StoreError(StoreError::CannotOpenFile, u"The folder '%1' cannot be read."_s.arg(folder));
    const QStorageInfo volume(folder);
    if (!volume.isValid() || !volume.isReady())
        return {};
    return {volume.bytesAvailable(), volume.bytesTotal()};
}

StudCopy::Outcome LocalDevices::copyFile(const QString &source, const QString &destination, Progress &progress)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        throw StoreError(StoreError::FileNotFound, u"The file '%1' cannot be read (%2)."_s.arg(source, in.errorString()));
    const QString partial = StudCopy::partialName(destination);
    QFile out(partial);
    struct RemoveUnlessKept
    {
        QFile &file;
        bool kept = false;
        ~RemoveUnlessKept()
        {
            if (!kept) {
                file.close();
                file.remove();
            }
        }
    } guard{out};
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        failCopy(destination, out);
    const qint64 total = in.size();
    progress.start(total);
    QByteArray chunk;
    qint64 done = 0;
    while (!in.atEnd()) {
        chunk = in.read(kChunk);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError)
            throw StoreError(StoreError::FileNotFound,
                             u"The file '%1' cannot be read (%2)."_s.arg(source, in.errorString()));
        if (out.write(chunk) != chunk.size())
            failCopy(destination, out);
        done += chunk.size();
        progress.step(done);
        if (progress.cancelled())
            return StudCopy::Outcome::Stopped;
    }
    // On the medium before it takes its name: a stick pulled out now leaves the older copy.
    if (!out.flush() || ::fsync(out.handle()) != 0)
        failCopy(destination, out);
    out.close();
    StudCopy::putInPlace(partial, destination, source);
    guard.kept = true;
    return StudCopy::Outcome::Done;
}

} // namespace tarvex
