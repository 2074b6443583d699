// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"

#include "app/AlarmNotification.h"
#include "catalogue/StationRepository.h"
#include "coordination/AudioLevel.h"
#include "diagnostics/Diagnostics.h"
#include "platform/Defaults.h"
#include "platform/LoginItem.h"

namespace velarin {

namespace {

const QString openAtLoginKey = QStringLiteral("open_at_login");

}

AppDelegate::AppDelegate(Services services)
    : m_services(std::move(services))
{
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_services.diagnostics.noteLaunch();
    restoreLoginItemIfNeeded();
    m_services.applyTheme(m_services.stations.themeMode());
    m_services.audioLevel.apply();
    // Nobody waits for the end: the screens follow the repository.
    m_services.stations.ensureLoaded([] {});
}

void AppDelegate::restoreLoginItemIfNeeded()
{
    const bool wanted = m_services.defaults.boolean(openAtLoginKey).value_or(false);
    if (!wanted || m_services.loginItem.status() == LoginItem::Status::Enabled)
        return;
    if (const auto reason = m_services.loginItem.registerItem()) {
        m_services.diagnostics.append(
            DiagnosticCategory::error, QStringLiteral("Avvio al login non riuscito: %1").arg(*reason));
    } else {
        m_services.diagnostics.append(
            DiagnosticCategory::app, QStringLiteral("Avvio al login registrato di nuovo dopo il cambio di nome"));
    }
}

void AppDelegate::applicationWillTerminate()
{
    m_services.defaults.setBoolean(wasPlayingKey, false);
    m_services.diagnostics.cancelHeartbeat();
}

void AppDelegate::userNotificationWillPresent(const QString& identifier,
    const std::function<void(PresentationOptions)>& completion, const RingFromUser& ringFromUser)
{
    if (const auto alarmId = alarmIdOfNotification(identifier)) {
        QMetaObject::invokeMethod(
            this, [ringFromUser, id = *alarmId] { ringFromUser(id); }, Qt::QueuedConnection);
    }
    completion(PresentationOption::banner | PresentationOption::list | PresentationOption::sound);
}

void AppDelegate::userNotificationDidReceive(
    const QString& identifier, const std::function<void()>& completion, const RingFromUser& ringFromUser)
{
    const auto alarmId = alarmIdOfNotification(identifier);
    QMetaObject::invokeMethod(
        this,
        [=, this] {
            if (alarmId)
                answerAlarm(*alarmId, completion, ringFromUser);
            else
                completion();
        },
        Qt::QueuedConnection);
}

void AppDelegate::answerAlarm(
    const QString& alarmId, const std::function<void()>& completion, const RingFromUser& ringFromUser)
{
    m_services.activate();
    m_services.stations.ensureLoaded([=] {
        ringFromUser(alarmId);
        completion();
    });
}

}
