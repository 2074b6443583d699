// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace velarin {

// The program's own announcements: one signal a name, posted synchronously on the main thread to whoever listens.
// Screens follow the properties of stores and engines; the "DidChange" signals are the public word that something
// changed, for whoever wants to know without holding the object.
class Broadcasts : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    // "Velarin.playbackDidChange": an engine's state, title, artwork or rate changed, or a favourite was toggled by
    // the command. Posted after the now-playing data were published.
    void radioPlaybackDidChange();
    // "Velarin.stationsDidChange": the catalogue was rebuilt, or a country's list was stored.
    void radioStationsDidChange();
    // "Velarin.favoritesDidChange": the favourites or the custom stations changed.
    void radioFavoritesDidChange();
    // "Velarin.settingsDidChange": automatic reconnection or the connect timeout was set, even to the same value.
    void radioSettingsDidChange();
    // "Velarin.libraryDidChange": tracks were published, or the recent stations changed.
    void radioLibraryDidChange();
    // "Velarin.podcastsDidChange": a show was followed or left.
    void radioPodcastsDidChange();
    // "Velarin.showAddStation": open the sheet that adds a station, with this text in its search field.
    void radioShowAddStation(const QString& query);
    // "Velarin.openSidebarItem": show a place of the sidebar, given by its raw text.
    void radioOpenSidebarItem(const QString& item);
    // "Velarin.toggleFullPlayer": open or close the large player.
    void radioToggleFullPlayer();
};

}
