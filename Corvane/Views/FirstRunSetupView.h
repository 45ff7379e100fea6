// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <functional>

class QPushButton;
class QScrollArea;

namespace corvane {

class AppSettings;
class PageIndicator;

namespace look {
class SymbolView;
class Text;
} // namespace look

/// The content of the first-run window for a new teacher: five pages, one at a time. It only informs; it
/// requests nothing and sends nothing.
class FirstRunSetupView final : public QWidget {
    Q_OBJECT

public:
    /// `settings` is borrowed. `dismiss` closes the window; it may delete the view only on a later turn of
    /// the event loop. If the window is closed in any other way, the setup remains unfinished.
    FirstRunSetupView(AppSettings &settings, std::function<void()> dismiss, QWidget *parent = nullptr);

    /// The index of the current page, from 0.
    [[nodiscard]] int step() const { return m_step; }

    /// The height that shows any page without scrolling.
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void goBack();
    void goForward();
    void turnTo(int step);
    void showStep();
    void reserveRoom();

    AppSettings &m_settings;
    std::function<void()> m_dismiss;
    int m_step = 0;
    look::SymbolView *m_symbol;
    look::Text *m_title;
    look::Text *m_detail;
    PageIndicator *m_indicator;
    QPushButton *m_back;
    QPushButton *m_forward;
    QScrollArea *m_page;
};

} // namespace corvane
