// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QRect>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

namespace corvane {

/// A tray along the lower edge of the screen, which supports only embedded icons (the older protocol).
class Tray final {
public:
    static constexpr int thickness = 30;

    Tray(QSize screen, const QColor &colour)
        : m_area(0, screen.height() - thickness, screen.width(), thickness)
        , m_colour(colour)
    {
        QFile settings(m_folder.filePath(QStringLiteral("tint2rc")));
        if (!settings.open(QIODevice::WriteOnly)) {
            qFatal("the tray's settings cannot be written");
        }
        settings.write(
            QStringLiteral(
                "rounded = 0\nborder_width = 0\nbackground_color = %1 100\n"
                "panel_items = S\npanel_size = 100% %2\npanel_position = bottom center horizontal\n"
                "panel_background_id = 1\nsystray_padding = 6 2 6\nsystray_icon_size = 22\n")
                .arg(colour.name())
                .arg(thickness)
                .toUtf8());
        settings.close();
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("tint2"), {QStringLiteral("-c"), settings.fileName()});
        if (!m_process.waitForStarted()) {
            qFatal("tint2 does not start");
        }
    }

    ~Tray()
    {
        m_process.terminate();
        m_process.waitForFinished(timeout);
    }

    Tray(const Tray &) = delete;
    Tray &operator=(const Tray &) = delete;

    /// The bounding rectangle of everything in the tray's area that does not have the tray's colour.
    [[nodiscard]] QRect shown() const
    {
        const QImage picture = QGuiApplication::primaryScreen()
                                   ->grabWindow(0, m_area.x(), m_area.y(), m_area.width(), m_area.height())
                                   .toImage();
        QRect found;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y).rgb() != m_colour.rgb()) {
                    found |= QRect(m_area.x() + x, m_area.y() + y, 1, 1);
                }
            }
        }
        return found;
    }

    /// Whether the tray is on the screen and empty.
    [[nodiscard]] bool isEmpty() const { return shown().isNull(); }

    /// Whether the tray contains one icon and nothing else.
    [[nodiscard]] bool hasOneIcon() const
    {
        const QSize size = shown().size();
        return size.width() >= 12 && size.width() <= 24 && size.height() >= 12 && size.height() <= 24;
    }

    /// Waits until five checks in a row find one icon, for at most `limit` milliseconds: a busy tray draws an
    /// icon, removes it and draws it again, and loses clicks in the meantime.
    [[nodiscard]] bool settlesWithOneIcon(int limit = timeout) const
    {
        constexpr int enough = 5;
        int looks = 0;
        return QTest::qWaitFor(
            [&] {
                looks = hasOneIcon() ? looks + 1 : 0;
                return looks >= enough;
            },
            limit);
    }

private:
    static constexpr int timeout = 10'000; // milliseconds

    QRect m_area;
    QColor m_colour;
    QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace corvane
