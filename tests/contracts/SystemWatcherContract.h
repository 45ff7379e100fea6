// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SystemWatcher.h"
#include "Corvane/Utilities/Clock.h"

#include <QByteArray>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace corvane {

/// What every implementation of SystemWatcher must do. A test class derives from it, calls watch() in its
/// init() with a watcher on a machine that is awake, has a usable network and is set to Europe/Berlin, and
/// implements the functions that change that machine.
class SystemWatcherContract : public QObject {
    Q_OBJECT

protected:
    virtual void sleepAndWake() = 0;
    virtual void setNetworkUsable(bool isUsable) = 0;
    virtual void setClockBy(Seconds change) = 0;
    virtual void setZone(const QByteArray &zone) = 0;

    void watch(const SystemWatcher &watcher)
    {
        m_wakings = std::make_unique<QSignalSpy>(&watcher, &SystemWatcher::woke);
        m_networks = std::make_unique<QSignalSpy>(&watcher, &SystemWatcher::networkCameBack);
        m_clocks = std::make_unique<QSignalSpy>(&watcher, &SystemWatcher::clockWasSet);
        m_zones = std::make_unique<QSignalSpy>(&watcher, &SystemWatcher::timeZoneChanged);
    }

    /// The number of signals so far: woke, networkCameBack, clockWasSet, timeZoneChanged.
    [[nodiscard]] QList<qsizetype> told() const
    {
        return {m_wakings->size(), m_networks->size(), m_clocks->size(), m_zones->size()};
    }

private:
    std::unique_ptr<QSignalSpy> m_wakings;
    std::unique_ptr<QSignalSpy> m_networks;
    std::unique_ptr<QSignalSpy> m_clocks;
    std::unique_ptr<QSignalSpy> m_zones;

private Q_SLOTS:
    void eachWakeUpIsReportedOnce()
    {
        sleepAndWake();
        QTRY_COMPARE(told(), (QList<qsizetype>{1, 0, 0, 0}));
        sleepAndWake();
        QTRY_COMPARE(told(), (QList<qsizetype>{2, 0, 0, 0}));
    }

    void aNetworkIsReportedWhenItComesBackAndNotWhenItGoes()
    {
        for (const qsizetype times : {1, 2}) {
            setNetworkUsable(false);
            QCOMPARE(told(), (QList<qsizetype>{0, times - 1, 0, 0}));
            setNetworkUsable(true);
            QTRY_COMPARE(told(), (QList<qsizetype>{0, times, 0, 0}));
        }
    }

    void aNetworkThatNeverWentIsNotReported()
    {
        setNetworkUsable(true);
        setNetworkUsable(true);
        sleepAndWake();
        QTRY_COMPARE(told(), (QList<qsizetype>{1, 0, 0, 0}));
    }

    void eachClockChangeIsReportedForwardOrBack()
    {
        qsizetype times = 0;
        for (const double change : {3600.0, -86400.0, -1.0, 0.5}) {
            setClockBy(Seconds{change});
            ++times;
            QTRY_COMPARE(told(), (QList<qsizetype>{0, 0, times, 0}));
        }
    }

    void tinyClockChangesAreNotReported()
    {
        setClockBy(Seconds{0.01});
        setClockBy(Seconds{-0.01});
        sleepAndWake();
        QTRY_COMPARE(told(), (QList<qsizetype>{1, 0, 0, 0}));
        setClockBy(Seconds{60});
        QTRY_COMPARE(told(), (QList<qsizetype>{1, 0, 1, 0}));
        setClockBy(Seconds{0.01});
        sleepAndWake();
        QTRY_COMPARE(told(), (QList<qsizetype>{2, 0, 1, 0}));
    }

    void eachZoneChangeIsReportedOnce()
    {
        setZone("America/Havana");
        QTRY_COMPARE(told(), (QList<qsizetype>{0, 0, 0, 1}));
        setZone("Europe/Berlin");
        QTRY_COMPARE(told(), (QList<qsizetype>{0, 0, 0, 2}));
    }

    void settingTheSameZoneAgainIsNoChange()
    {
        setZone("Europe/Berlin");
        setZone("America/Havana");
        QTRY_COMPARE(told(), (QList<qsizetype>{0, 0, 0, 1}));
    }
};

} // namespace corvane
