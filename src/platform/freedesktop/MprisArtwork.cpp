// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisArtwork.h"

#include "platform/freedesktop/PictureFolder.h"

namespace velarin {

MprisArtwork::MprisArtwork(Executor& executor, QString folder, std::function<void()> changed)
    : m_executor(executor)
    , m_folder(std::move(folder))
    , m_changed(std::move(changed))
{
}

MprisArtwork::~MprisArtwork()
{
    // First the token, then the folder: a job under way that writes after this sees the token and takes its file back.
    m_job.cancel();
    if (!m_folder.isEmpty())
        PictureFolder(m_folder).remove();
}

void MprisArtwork::show(const QImage& picture)
{
    if (m_folder.isEmpty() || picture == m_shown)
        return;
    m_shown = picture;
    m_address.clear();
    if (!m_isWriting)
        write();
}

void MprisArtwork::write()
{
    m_isWriting = true;
    m_job = runOn(
        m_executor,
        [picture = m_shown, folder = m_folder](
            const std::stop_token& token) { return PictureFolder(folder).keepOnly(picture, token); },
        [this, picture = m_shown](const QString& path) { written(picture, path); });
}

void MprisArtwork::written(const QImage& picture, const QString& path)
{
    m_isWriting = false;
    if (picture != m_shown) {
        write();
        return;
    }
    if (path.isEmpty())
        return;
    m_address = QUrl::fromLocalFile(path);
    m_changed();
}

}
