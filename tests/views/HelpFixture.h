// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Text.h"
#include "Corvane/Views/UserManualPDF.h"
#include "tests/support/Pictures.h"

#include <QAccessible>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <memory>

namespace corvane {

/// The windows of the help, with a record of what they opened. A test class derives from it for each window.
class HelpFixture : public QObject {
    Q_OBJECT

protected:
    [[nodiscard]] static QRect place(const QWidget &view, const QWidget *child)
    {
        return {child->mapTo(&view, QPoint()), child->size()};
    }

    /// The view's texts from top to bottom, as a screen reader reads them.
    [[nodiscard]] static QStringList texts(const QWidget &view)
    {
        QStringList found;
        for (auto *text : view.findChildren<look::Text *>()) {
            found.push_back(QAccessible::queryAccessibleInterface(text)->text(QAccessible::Name));
        }
        return found;
    }

    /// The widget with this text; nullptr if there is none.
    template <typename Widget>
    [[nodiscard]] static Widget *named(const QWidget &view, const QString &text)
    {
        for (auto *widget : view.findChildren<Widget *>()) {
            if (widget->text() == text) {
                return widget;
            }
        }
        return nullptr;
    }

    [[nodiscard]] UserManualPDF manualIn(const QString &folder)
    {
        return {{folder}, opener(), [this] { ++m_beeps; }};
    }

    [[nodiscard]] LinkOpener opener()
    {
        return [this](const QUrl &url) {
            m_opened.push_back(url);
            return true;
        };
    }

    static void compare(QWidget &view, QSize size, const QString &name)
    {
        view.resize(size);
        (void)view.grab(); // forces the layout, which may turn out to need scrolling
        QCoreApplication::processEvents();
        const QString difference = pictures::difference(view.grab().toImage(), name);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    std::unique_ptr<QTemporaryDir> m_room; ///< where the manual is looked for
    std::unique_ptr<UserManualPDF> m_manual;
    QList<QUrl> m_opened;
    int m_beeps = 0;

private Q_SLOTS:
    void init()
    {
        pictures::prepareApplication(pictures::Theme::light, 1);
        m_room = std::make_unique<QTemporaryDir>();
        m_manual = std::make_unique<UserManualPDF>(manualIn(m_room->path()));
        m_opened.clear();
        m_beeps = 0;
    }
};

} // namespace corvane
