// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/LoginEntry.h"

#include <QHash>

#include <algorithm>

namespace velarin {

namespace {

constexpr QStringView reservedCharacters = u" \t\n\"'\\><~|&;$*?#()`";
constexpr QStringView escapedInsideQuotes = u"\"`$\\";

QString quotedArgument(const QString& argument)
{
    QString text = argument;
    text.replace(u'%', QStringLiteral("%%"));
    const bool isPlain = !text.isEmpty() && std::ranges::none_of(text,
                                                [](QChar character) { return reservedCharacters.contains(character); });
    if (isPlain)
        return text;
    QString quoted;
    for (const QChar character : text) {
        if (escapedInsideQuotes.contains(character))
            quoted += u'\\';
        quoted += character;
    }
    return u'"' + quoted + u'"';
}

QString escapedString(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'\n', QStringLiteral("\\n"))
        .replace(u'\t', QStringLiteral("\\t"))
        .replace(u'\r', QStringLiteral("\\r"));
}

// The keys of the group [Desktop Entry], as they stand.
QHash<QString, QString> keysOf(const QByteArray& entry)
{
    QHash<QString, QString> keys;
    bool isInGroup = false;
    for (const QByteArray& line : entry.split('\n')) {
        const QString text = QString::fromUtf8(line).trimmed();
        if (text.startsWith(u'['))
            isInGroup = text == QStringLiteral("[Desktop Entry]");
        else if (const qsizetype sign = text.indexOf(u'='); isInGroup && sign > 0 && !text.startsWith(u'#'))
            keys.insert(text.first(sign).trimmed(), text.sliced(sign + 1).trimmed());
    }
    return keys;
}

}

QString execValue(const QStringList& command)
{
    QStringList arguments;
    for (const QString& argument : command)
        arguments << quotedArgument(argument);
    return escapedString(arguments.join(u' '));
}

QByteArray loginEntry(const QStringList& command)
{
    const QString text = QStringLiteral("[Desktop Entry]\n"
                                        "Type=Application\n"
                                        "Name=Velarin\n"
                                        "Comment=Radio, podcast e musica\n"
                                        "Exec=%1\n"
                                        "Icon=com.brenholt.velarin\n"
                                        "Terminal=false\n"
                                        "X-GNOME-Autostart-enabled=true\n");
    return text.arg(execValue(command)).toUtf8();
}

LoginItem::Status judgeLoginEntry(const QByteArray& entry, const QStringList& command)
{
    const QHash<QString, QString> keys = keysOf(entry);
    const bool isOff = keys.value(QStringLiteral("Hidden")) == QStringLiteral("true") ||
                       keys.value(QStringLiteral("X-GNOME-Autostart-enabled")) == QStringLiteral("false");
    const bool isOurs = keys.value(QStringLiteral("Exec")) == execValue(command);
    return isOurs && !isOff ? LoginItem::Status::Enabled : LoginItem::Status::NeedsRepair;
}

}
