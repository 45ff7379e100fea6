// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/WindowScenes.h"

#include <QKeySequence>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace corvane {

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
    m_entries.push_back({std::move(scene), {}});
}

bool WindowScenes::has(const QString &identifier) const
{
    return find(identifier) != nullptr;
}

QWidget *WindowScenes::window(const QString &identifier) const
{
    const Entry *entry = find(identifier);
    // One that was closed lives on until the event loop's next turn.
    return entry != nullptr && entry->window != nullptr && entry->window->isVisible() ? entry->window.data()
                                                                                      : nullptr;
}

void WindowScenes::open(const QString &identifier, bool takesFocus)
{
    const Entry *known = find(identifier);
    if (known == nullptr || window(identifier) != nullptr) {
        return;
    }
    Entry &entry = m_entries[static_cast<std::size_t>(known - m_entries.data())];
    QWidget *window = entry.scene.makeContent().release();
    entry.window = window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setAttribute(Qt::WA_ShowWithoutActivating, !takesFocus);
    window->setWindowTitle(entry.scene.title);
    window->resize(entry.scene.defaultSize.boundedTo(window->screen()->availableSize()));
    const auto *close = new QShortcut(QKeySequence(QKeySequence::Close), window);
    QObject::connect(close, &QShortcut::activated, window, &QWidget::close);
    m_windowSystem.keepOutOfTaskBar(window->winId());
    window->show();
}

} // namespace corvane
