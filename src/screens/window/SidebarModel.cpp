// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/window/SidebarModel.h"

#include "base/Broadcasts.h"

#include <algorithm>
#include <array>

namespace velarin {

namespace {

struct Place
{
    const char16_t* raw;
    const char* section;
    const char* label;
    const char16_t* symbol;
};

constexpr std::array places{
    Place{ u"italy", QT_TRANSLATE_NOOP("velarin::SidebarModel", "Ascolta"),
        QT_TRANSLATE_NOOP("velarin::SidebarModel", "Radio italiane"), u"dot.radiowaves.left.and.right" },
};

bool opensSection(int row)
{
    const auto at = [](int index) { return QByteArrayView(places.at(static_cast<std::size_t>(index)).section); };
    return row == 0 || at(row) != at(row - 1);
}

}

SidebarModel::SidebarModel(Broadcasts& broadcasts)
{
    connect(&broadcasts, &Broadcasts::radioOpenSidebarItem, this, &SidebarModel::select);
}

void SidebarModel::select(const QString& place)
{
    const bool known = std::any_of(
        places.begin(), places.end(), [&place](const Place& candidate) { return place == QStringView(candidate.raw); });
    if (!known || place == m_selection)
        return;
    m_selection = place;
    Q_EMIT selectionChanged();
}

int SidebarModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(places.size());
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Place& place = places[static_cast<std::size_t>(index.row())];
    switch (role) {
    case PlaceRole:
        return QString::fromUtf16(place.raw);
    case HeadingRole:
        return opensSection(index.row()) ? tr(place.section) : QString();
    case LabelRole:
        return tr(place.label);
    case SymbolRole:
        return QString::fromUtf16(place.symbol);
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const
{
    return { { PlaceRole, "place" }, { HeadingRole, "heading" }, { LabelRole, "label" }, { SymbolRole, "symbol" } };
}

}
