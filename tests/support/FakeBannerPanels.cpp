// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/FakeBannerPanels.h"

#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using Record = FakeBannerPanels::Record;

/// Ends the animation `number` after its duration, unless it was replaced or its banner panel was closed.
QCoro::Task<void> endAnimation(std::weak_ptr<Record> bannerPanel, std::uint64_t number,
                               BannerPanelAnimation animation, std::function<void()> completion)
{
    co_await wait(animation.duration);
    const std::shared_ptr<Record> record = bannerPanel.lock();
    if (!record || record->isClosed || record->animationNumber != number) {
        co_return;
    }
    record->frame = animation.frame;
    record->alpha = animation.alpha;
    if (completion) {
        completion();
    }
}

class FakeBannerPanel final : public BannerPanel {
public:
    explicit FakeBannerPanel(std::shared_ptr<Record> record) : m_record(std::move(record)) {}
    ~FakeBannerPanel() override
    {
        m_record->calls << u"destroy"_s;
        removeFromScreen();
    }

    [[nodiscard]] Rect frame() const override { return m_record->frame; }

    void setFrame(Rect frame) override
    {
        m_record->calls << u"setFrame"_s;
        if (!m_record->isClosed) {
            ++m_record->animationNumber;
            m_record->frame = frame;
        }
    }

    void setAlpha(double alpha) override
    {
        m_record->calls << u"setAlpha"_s;
        if (!m_record->isClosed) {
            ++m_record->animationNumber;
            m_record->alpha = alpha;
        }
    }

    void orderFrontRegardless() override
    {
        m_record->calls << u"orderFrontRegardless"_s;
        m_record->isVisible = !m_record->isClosed;
    }

    void animate(const BannerPanelAnimation &animation, std::function<void()> completion) override
    {
        m_record->calls << u"animate"_s;
        m_record->animations.push_back(animation);
        // The task ends by itself and refers to the record only weakly.
        spawn(endAnimation(m_record, ++m_record->animationNumber, animation, std::move(completion)));
    }

    void close() override
    {
        m_record->calls << u"close"_s;
        ++m_record->closeCalls;
        removeFromScreen();
    }

private:
    void removeFromScreen()
    {
        m_record->isVisible = false;
        m_record->isClosed = true;
    }

    std::shared_ptr<Record> m_record;
};

} // namespace

std::shared_ptr<BannerPanel> FakeBannerPanels::makeBannerPanel(Rect frame, const BannerPanelTraits &traits,
                                                               const TeachingAction &action,
                                                               std::function<void()> onDismiss)
{
    auto record = std::make_shared<Record>();
    record->initialFrame = frame;
    record->traits = traits;
    record->action = action;
    record->onDismiss = std::move(onDismiss);
    record->frame = frame;
    records.push_back(record);
    return std::make_shared<FakeBannerPanel>(std::move(record));
}

std::vector<std::shared_ptr<FakeBannerPanels::Record>> FakeBannerPanels::visibleBannerPanels() const
{
    std::vector<std::shared_ptr<Record>> visible;
    std::ranges::copy_if(records, std::back_inserter(visible),
                         [](const auto &record) { return record->isVisible; });
    return visible;
}

} // namespace corvane
