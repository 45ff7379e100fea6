// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/WindowScenes.h"

#include "Corvane/Notifications/Screens.h"
#include "Corvane/Views/ScreenGeometry.h"

#include <QEvent>
#include <QKeySequence>
#include <QScreen>
#include <QShortcut>
#include <QStyle>

#include <algorithm>
#include <functional>
#include <utility>

namespace corvane {

namespace {

/// Calls `onClose` when a window is about to close.
class CloseWatch final : public QObject {
public:
    CloseWatch(QWidget &window, std::function<void()> onClose)
        : QObject(&window)
        , m_onClose(std::move(onClose))
    {
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Close) {
            m_onClose();
        }
        return false;
    }

private:
    std::function<void()> m_onClose;
};

} // namespace

WindowScenes::~WindowScenes()
{
    for (const Entry &entry : m_entries) {
        delete entry.window;
    }
}

const WindowScenes::Entry *WindowScenes::find(const QString &identifier) const
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry &candidate) {
        return candidate.scene.identifier == identifier;
    });
    return entry != m_entries.end() ? &*entry : nullptr;
}

void WindowScenes::add(WindowScene scene)
{
    Q_ASSERT(!has(scene.identifier));
    m_entries.push_back({.scene = std::move(scene), .window = {}, .geometry = {}});
}

bool WindowScenes::has(const QString &identifier) const
{
    return find(identifier) != nullptr;
}

QWidget *WindowScenes::window(const QString &identifier) const
{
    const Entry *entry = find(identifier);
    // A closed window exists until the next turn of the event loop.
    return entry != nullptr && entry->window != nullptr && entry->window->isVisible() ? entry->window.data()
                                                                                      : nullptr;
}

void WindowScenes::open(const QString &identifier, bool takesFocus)
{
    const Entry *known = find(identifier);
    if (known == nullptr || window(identifier) != nullptr) {
        return;
    }
    const auto index = static_cast<std::size_t>(known - m_entries.data());
    Entry &entry = m_entries[index];
    QWidget *window = entry.scene.makeContent().release();
    entry.window = window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setAttribute(Qt::WA_ShowWithoutActivating, !takesFocus);
    window->setWindowTitle(entry.scene.title);
    place(index);
    const auto *close = new QShortcut(QKeySequence(QKeySequence::Close), window);
    QObject::connect(close, &QShortcut::activated, window, &QWidget::close);
    m_windowSystem.keepOutOfTaskBar(window->winId());
    window->show();
}

QRect WindowScenes::middle(const QWidget &window, QSize defaultSize) const
{
    const Screen screen =
        screenAt(m_screens.pointerLocation(), m_screens.screens(), m_screens.mainScreen().value_or(Screen{}));
    QRect room = pointsDown(screen.visibleFrame);
    if (room.isEmpty()) {
        room = window.screen()->availableGeometry();
    }
    const QPoint center = room.center();
    const int needed = window.hasHeightForWidth() ? window.heightForWidth(defaultSize.width()) : 0;
    // The window manager adds its title bar only when the window is shown; until then this is an estimate.
    const int titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    room.setBottom(room.bottom() - titleBar);
    QRect area({}, defaultSize.expandedTo({0, needed}).boundedTo(room.size()));
    area.moveCenter(center);
    area.moveTop(std::min(area.top(), room.bottom() + 1 - area.height()));
    return area;
}

void WindowScenes::place(std::size_t index)
{
    QWidget *window = m_entries[index].window;
    QRect opened;
    if (!window->restoreGeometry(m_entries[index].geometry)) {
        opened = middle(*window, m_entries[index].scene.defaultSize);
        window->resize(opened.size());
        window->move(opened.topLeft());
    }
    new CloseWatch(*window, [this, index, window, opened] {
        if (window->isMaximized() || QRect(window->pos(), window->size()) != opened) {
            m_entries[index].geometry = window->saveGeometry();
        }
    });
}

} // namespace corvane
