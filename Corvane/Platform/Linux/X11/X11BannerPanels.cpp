// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"

#include "Corvane/Platform/Linux/X11/BannerWindow.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <utility>

namespace corvane {

namespace {

class X11BannerPanel final : public BannerPanel {
public:
    explicit X11BannerPanel(BannerWindow *window) : m_window(window), m_lastFrame(window->frame()) {}
    ~X11BannerPanel() override { takeAway(); }
    X11BannerPanel(const X11BannerPanel &) = delete;
    X11BannerPanel &operator=(const X11BannerPanel &) = delete;

    [[nodiscard]] Rect frame() const override { return m_window ? m_window->frame() : m_lastFrame; }

    void setFrame(Rect frame) override
    {
        if (m_window) {
            m_window->setFrame(frame);
        }
    }

    void setAlpha(double alpha) override
    {
        if (m_window) {
            m_window->setAlpha(alpha);
        }
    }

    void orderFrontRegardless() override
    {
        if (m_window) {
            m_window->orderFront();
        }
    }

    void animate(const PanelAnimation &animation, std::function<void()> completion) override
    {
        if (m_window) {
            m_window->animate(animation, std::move(completion));
        }
    }

    void close() override { takeAway(); }

private:
    void takeAway()
    {
        if (m_window) {
            m_lastFrame = m_window->frame();
            std::exchange(m_window, nullptr)->finish();
        }
    }

    QPointer<BannerWindow> m_window;
    Rect m_lastFrame;
};

} // namespace

X11BannerPanels::X11BannerPanels(ContentFactory makeContent, const CardShape &shape)
    : m_makeContent(std::move(makeContent))
    , m_shape(shape)
{
}

X11BannerPanels::~X11BannerPanels() = default;

std::shared_ptr<BannerPanel> X11BannerPanels::makePanel(Rect frame, const PanelTraits &,
                                                        const TeachingAction &action,
                                                        std::function<void()> onDismiss)
{
    const bool isComposited = x11::connection() == nullptr || x11::isComposited();
    auto *window = new BannerWindow(frame, m_shape, isComposited, m_isLocked);
    window->setContent(m_makeContent(action, std::move(onDismiss)));
    std::erase(m_windows, nullptr);
    m_windows.emplace_back(window);
    return std::make_shared<X11BannerPanel>(window);
}

void X11BannerPanels::setSessionLocked(bool isLocked)
{
    m_isLocked = isLocked;
    for (const QPointer<BannerWindow> &window : m_windows) {
        if (window) {
            window->setSessionLocked(isLocked);
        }
    }
}

} // namespace corvane
