// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the tests that are written in QML on the parts.
#include "screens/parts/MonogramProvider.h"
#include "screens/parts/ShadowProvider.h"
#include "screens/parts/SymbolProvider.h"

#include <QQmlEngine>
#include <QtQuickTest>

namespace {

template<typename Provider>
void add(QQmlEngine& engine)
{
    engine.addImageProvider(QLatin1String(Provider::scheme), new Provider);
}

}

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        add<velarin::SymbolProvider>(*engine);
        add<velarin::ShadowProvider>(*engine);
        add<velarin::MonogramProvider>(*engine);
    }
};

QUICK_TEST_MAIN_WITH_SETUP(parts, Setup)

#include "PartsTest.moc"
