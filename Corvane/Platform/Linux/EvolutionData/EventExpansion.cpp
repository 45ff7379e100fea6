// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include <QCryptographicHash>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// A longer title is no lesson's: the event is left out. In characters.
constexpr qsizetype maximumTitleLength = 2'000;
/// Longer notes, places and links are cut, links left out. In bytes of UTF-8.
constexpr std::size_t maximumTextBytes = std::size_t{1024} * 1024;
/// More occurrences of one event in one day are no lessons.
constexpr std::size_t maximumOccurrences = 200;
/// The library walks a rule from its first occurrence, 4 µs a step; more steps take too long.
constexpr double maximumSteps = 150'000;
/// The library compares each occurrence in the window with those before: a quarter of a second for these.
constexpr double maximumInWindow = 1'500;
/// More dates added to a series or taken from it are no lessons.
constexpr int maximumDates = 10'000;
/// How far a changed rest of a series may be moved, in seconds: the window is widened by what it is.
constexpr double maximumShift = 60 * 86'400.0;
constexpr double day = 86'400;

QString toText(const char *text)
{
    return QString::fromUtf8(text, static_cast<qsizetype>(strnlen(text, maximumTextBytes)));
}

std::optional<QString> optionalText(const char *text)
{
    if (text == nullptr || *text == '\0') {
        return std::nullopt;
    }
    return toText(text);
}

bool has(ICalComponent *component, ICalPropertyKind kind)
{
    return static_cast<bool>(
        GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(component, kind)));
}

bool isCancelled(ICalComponent *component)
{
    return i_cal_component_get_status(component) == I_CAL_STATUS_CANCELLED;
}

/// The numbers of one BY part of a rule.
std::vector<short> part(GArray *array)
{
    std::vector<short> numbers;
    for (guint index = 0; array != nullptr && index < array->len; ++index) {
        const gshort number = g_array_index(array, gshort, index);
        if (number == I_CAL_RECURRENCE_ARRAY_MAX) {
            break;
        }
        numbers.push_back(number);
    }
    if (array != nullptr) {
        g_array_unref(array);
    }
    return numbers;
}

double stepLength(ICalRecurrenceFrequency frequency)
{
    switch (frequency) {
    case I_CAL_SECONDLY_RECURRENCE:
        return 1;
    case I_CAL_MINUTELY_RECURRENCE:
        return 60;
    case I_CAL_HOURLY_RECURRENCE:
        return 3'600;
    case I_CAL_DAILY_RECURRENCE:
        return day;
    case I_CAL_WEEKLY_RECURRENCE:
        return 7 * day;
    case I_CAL_MONTHLY_RECURRENCE:
        return 30 * day;
    case I_CAL_YEARLY_RECURRENCE:
    case I_CAL_NO_RECURRENCE:
        break;
    }
    return 365 * day;
}

/// Why a rule that begins at `start` cannot be walked through the window in reasonable time, or nothing. The
/// walk cannot be interrupted, and a rule that never comes true is walked for thousands of years, so that
/// what might be such a rule is not begun.
std::optional<QString> reasonNotToWalk(ICalRecurrence *rule, double start, double from, double to)
{
    double end = to;
    const auto seconds = part(i_cal_recurrence_get_by_second_array(rule));
    const auto minutes = part(i_cal_recurrence_get_by_minute_array(rule));
    const auto hours = part(i_cal_recurrence_get_by_hour_array(rule));
    const auto days = part(i_cal_recurrence_get_by_day_array(rule));
    const auto monthDays = part(i_cal_recurrence_get_by_month_day_array(rule));
    const auto yearDays = part(i_cal_recurrence_get_by_year_day_array(rule));
    const auto weeks = part(i_cal_recurrence_get_by_week_no_array(rule));
    const auto months = part(i_cal_recurrence_get_by_month_array(rule));
    const auto count = [](const std::vector<short> &numbers) {
        return std::max<double>(1, static_cast<double>(numbers.size()));
    };

    const ICalRecurrenceFrequency frequency = i_cal_recurrence_get_freq(rule);
    const double interval = std::max<double>(1, i_cal_recurrence_get_interval(rule));
    const bool picksDates = !monthDays.empty() || !yearDays.empty() || !weeks.empty() || !months.empty();
    double perStep = 1;
    bool mayNeverComeTrue = false;
    switch (frequency) {
    case I_CAL_SECONDLY_RECURRENCE:
        mayNeverComeTrue =
            picksDates || !days.empty() || !hours.empty() || !minutes.empty() || !seconds.empty();
        break;
    case I_CAL_MINUTELY_RECURRENCE:
        perStep = count(seconds);
        mayNeverComeTrue = picksDates || !days.empty() || !hours.empty() || !minutes.empty();
        break;
    case I_CAL_HOURLY_RECURRENCE:
        perStep = count(minutes) * count(seconds);
        mayNeverComeTrue = picksDates || (interval > 1 && (!days.empty() || !hours.empty())) ||
                           std::ranges::any_of(days, [](short number) { return number < 0 || number > 7; });
        break;
    case I_CAL_DAILY_RECURRENCE:
    case I_CAL_WEEKLY_RECURRENCE:
    case I_CAL_MONTHLY_RECURRENCE:
    case I_CAL_YEARLY_RECURRENCE:
    case I_CAL_NO_RECURRENCE:
        perStep = count(hours) * count(minutes) * count(seconds);
        // A day's rule that never comes true takes half a second: as many times as a day is divided.
        mayNeverComeTrue = picksDates && perStep > 4;
        if (frequency != I_CAL_DAILY_RECURRENCE && (picksDates || !days.empty())) {
            perStep *= std::ceil(stepLength(frequency) / day);
        }
        break;
    }
    if (mayNeverComeTrue) {
        return u"its rule is too fine to be followed"_s;
    }
    const auto until = GObjectRef<ICalTime>::adopt(i_cal_recurrence_get_until(rule));
    if (until && i_cal_time_is_null_time(until.get()) == FALSE) {
        end = std::min(end, static_cast<double>(i_cal_time_as_timet(until.get())) + day);
    }
    double steps = std::max(0.0, end - start) / (stepLength(frequency) * interval) * perStep;
    if (const int times = i_cal_recurrence_get_count(rule); times > 0 && !picksDates && days.empty()) {
        steps = std::min(steps, static_cast<double>(times));
    }
    const double inWindow = (to - from) / (stepLength(frequency) * interval) * perStep;
    if (std::min(steps, inWindow) > maximumInWindow) {
        return u"it occurs too often"_s;
    }
    if (steps > maximumSteps) {
        return u"it has repeated too often since its beginning"_s;
    }
    return std::nullopt;
}

/// The expansion of one group.
class GroupExpansion {
public:
    GroupExpansion(const ComponentGroup &group, const ExpansionRequest &request, ExpansionControl &control,
                   ICalTimezone *defaultZone)
        : m_group(group)
        , m_request(request)
        , m_control(control)
        , m_defaultZone(defaultZone)
    {
    }

    /// Nothing when it was cancelled.
    std::optional<GroupOutcome> run()
    {
        collectChanges();
        for (const auto &component : m_group.components) {
            ICalComponent *event = component.get();
            if (isCancelled(event)) {
                continue;
            }
            if (!expand(event, has(event, I_CAL_RECURRENCEID_PROPERTY))) {
                return std::nullopt;
            }
        }
        return std::move(m_outcome);
    }

private:
    /// "This and all that follow": where the rest of the series is moved.
    struct Rest {
        double shift;
        double duration;
        ICalComponent *event;
    };

    static ICalTimezone *resolveZone(const gchar *tzid, gpointer data, GCancellable *, GError **)
    {
        return static_cast<GroupExpansion *>(data)->zone(tzid);
    }

    ICalTimezone *zone(const char *tzid)
    {
        if (tzid == nullptr || *tzid == '\0') {
            return m_defaultZone;
        }
        const auto known = m_zones.find(tzid);
        if (known != m_zones.end()) {
            return known->second;
        }
        ICalTimezone *found = m_request.customZone ? m_request.customZone(tzid) : nullptr;
        if (found == nullptr) {
            found = i_cal_timezone_get_builtin_timezone_from_tzid(tzid);
        }
        if (found == nullptr) {
            found = i_cal_timezone_get_builtin_timezone(tzid);
        }
        if (found == nullptr) {
            // The names that other systems give to zones.
            const char *location = e_cal_match_tzid(tzid);
            found = location != nullptr ? i_cal_timezone_get_builtin_timezone(location) : nullptr;
        }
        if (found == nullptr) {
            found = m_defaultZone;
        }
        m_zones.emplace(tzid, found);
        return found;
    }

    double toUtc(ICalTime *time) const
    {
        if (i_cal_time_is_utc(time) != FALSE) {
            return static_cast<double>(i_cal_time_as_timet(time));
        }
        ICalTimezone *own = i_cal_time_is_date(time) != FALSE ? nullptr : i_cal_time_get_timezone(time);
        return static_cast<double>(i_cal_time_as_timet_with_zone(time, own != nullptr ? own : m_defaultZone));
    }

    /// The moment that a property tells, with the zone that it names.
    double propertyToUtc(ICalProperty *property, ICalTime *time)
    {
        if (i_cal_time_is_utc(time) != FALSE) {
            return static_cast<double>(i_cal_time_as_timet(time));
        }
        ICalTimezone *own = m_defaultZone;
        const auto parameter = GObjectRef<ICalParameter>::adopt(
            i_cal_property_get_first_parameter(property, I_CAL_TZID_PARAMETER));
        if (parameter && i_cal_time_is_date(time) == FALSE) {
            own = zone(i_cal_parameter_get_tzid(parameter.get()));
        }
        return static_cast<double>(i_cal_time_as_timet_with_zone(time, own));
    }

    static qint64 dayNumber(ICalTime *time)
    {
        return i_cal_time_get_year(time) * 10'000LL + i_cal_time_get_month(time) * 100LL +
               i_cal_time_get_day(time);
    }

    /// Which instances of the series were changed, and from where on.
    void collectChanges()
    {
        for (const auto &component : m_group.components) {
            const auto property = GObjectRef<ICalProperty>::adopt(
                i_cal_component_get_first_property(component.get(), I_CAL_RECURRENCEID_PROPERTY));
            if (!property) {
                continue;
            }
            const auto time = GObjectRef<ICalTime>::adopt(i_cal_property_get_recurrenceid(property.get()));
            if (!time || i_cal_time_is_null_time(time.get()) != FALSE) {
                continue;
            }
            const double moment = propertyToUtc(property.get(), time.get());
            if (i_cal_time_is_date(time.get()) != FALSE) {
                m_changedDays.insert(dayNumber(time.get()));
            }
            m_changed.insert(moment);
            const auto range = GObjectRef<ICalParameter>::adopt(
                i_cal_property_get_first_parameter(property.get(), I_CAL_RANGE_PARAMETER));
            if (range && i_cal_parameter_get_range(range.get()) == I_CAL_RANGE_THISANDFUTURE) {
                double start = moment;
                double end = moment;
                firstOccurrence(component.get(), start, end);
                const double shift = std::clamp(start - moment, -maximumShift, maximumShift);
                m_rests.insert_or_assign(moment, Rest{shift, std::max(0.0, end - start), component.get()});
                m_widest = std::max(m_widest, std::abs(shift));
            }
        }
    }

    /// Where a component that does not repeat begins and ends.
    void firstOccurrence(ICalComponent *event, double &start, double &end)
    {
        const auto begin = GObjectRef<ICalProperty>::adopt(
            i_cal_component_get_first_property(event, I_CAL_DTSTART_PROPERTY));
        if (!begin) {
            return;
        }
        const auto startTime = GObjectRef<ICalTime>::adopt(i_cal_property_get_dtstart(begin.get()));
        start = propertyToUtc(begin.get(), startTime.get());
        end = start;
        const auto finish =
            GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(event, I_CAL_DTEND_PROPERTY));
        if (finish) {
            const auto endTime = GObjectRef<ICalTime>::adopt(i_cal_property_get_dtend(finish.get()));
            end = propertyToUtc(finish.get(), endTime.get());
            return;
        }
        const auto length = GObjectRef<ICalDuration>::adopt(i_cal_component_get_duration(event));
        if (length) {
            end = start + i_cal_duration_as_int(length.get());
        }
    }

    struct Walk {
        GroupExpansion &self;
        ICalComponent *event;
        bool isChange;
        std::vector<CalendarEvent> events;
        bool isTooMany = false;
        bool isTitleTooLong = false;
    };

    static gboolean takeInstance(ICalComponent *, ICalTime *startTime, ICalTime *endTime, gpointer data,
                                 GCancellable *, GError **)
    {
        auto &walk = *static_cast<Walk *>(data);
        return walk.self.take(walk, startTime, endTime) ? TRUE : FALSE;
    }

    /// Answers whether the walk is to go on.
    bool take(Walk &walk, ICalTime *startTime, ICalTime *endTime)
    {
        if (m_control.isCancelled()) {
            return false;
        }
        double start = toUtc(startTime);
        double end = std::max(start, toUtc(endTime));
        ICalComponent *event = walk.event;
        if (!walk.isChange) {
            if (m_changed.contains(start) || m_changedDays.contains(dayNumber(startTime))) {
                return true;
            }
            auto rest = m_rests.upper_bound(start);
            if (rest != m_rests.begin()) {
                --rest;
                event = rest->second.event;
                if (isCancelled(event)) {
                    return true;
                }
                start += rest->second.shift;
                end = start + rest->second.duration;
            }
        }
        const double from = secondsSince1970(m_request.interval.start);
        const double to = secondsSince1970(m_request.interval.end);
        if (!(start < to && (end > from || (start == end && start >= from)))) {
            return true;
        }
        if (walk.events.size() >= maximumOccurrences) {
            walk.isTooMany = true;
            return false;
        }
        CalendarEvent made = texts(event);
        if (made.title && made.title->size() > maximumTitleLength) {
            walk.isTitleTooLong = true;
            return false;
        }
        made.startDate = dateSince1970(start);
        made.endDate = dateSince1970(end);
        made.isAllDay = i_cal_time_is_date(startTime) != FALSE;
        walk.events.push_back(std::move(made));
        return true;
    }

    static CalendarEvent texts(ICalComponent *event)
    {
        CalendarEvent made;
        made.title = optionalText(i_cal_component_get_summary(event));
        made.location = optionalText(i_cal_component_get_location(event));
        made.notes = optionalText(i_cal_component_get_description(event));
        const auto link =
            GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(event, I_CAL_URL_PROPERTY));
        const char *address = link ? i_cal_property_get_url(link.get()) : nullptr;
        if (address != nullptr && *address != '\0' && std::strlen(address) < maximumTextBytes) {
            const QUrl url(toText(address).trimmed(), QUrl::TolerantMode);
            if (url.isValid() && !url.isEmpty()) {
                made.url = url;
            }
        }
        return made;
    }

    void skipEvent(ICalComponent *event, const QString &reason)
    {
        const auto title = optionalText(i_cal_component_get_summary(event));
        const char *uid = i_cal_component_get_uid(event);
        const QString text = u"title=\"%1\" reason=\"%2\""_s.arg(logText(title.value_or(QString())), reason);
        QByteArray key = text.toUtf8();
        key.append('\0').append(uid, static_cast<qsizetype>(uid != nullptr ? strnlen(uid, 1'000) : 0));
        m_outcome.skippedEvents.push_back({key, text});
    }

    /// Answers false when it was cancelled.
    bool expand(ICalComponent *event, bool isChange)
    {
        const double from = secondsSince1970(m_request.interval.start) - day - m_widest;
        const double to = secondsSince1970(m_request.interval.end) + day + m_widest;
        if (!isChange) {
            if (const auto reason = reasonNotToExpand(event, from, to)) {
                skipEvent(event, *reason);
                return true;
            }
        }
        ICalTimezone *utc = i_cal_timezone_get_utc_timezone();
        const auto begin = GObjectRef<ICalTime>::adopt(
            i_cal_time_new_from_timet_with_zone(static_cast<time_t>(std::floor(from)), 0, utc));
        const auto end = GObjectRef<ICalTime>::adopt(
            i_cal_time_new_from_timet_with_zone(static_cast<time_t>(std::ceil(to)), 0, utc));
        Walk walk{*this, event, isChange, {}};
        GError *error = nullptr;
        const gboolean isDone = e_cal_recur_generate_instances_sync(
            event, begin.get(), end.get(), &GroupExpansion::takeInstance, &walk, &GroupExpansion::resolveZone,
            this, m_defaultZone, m_control.cancellable(), &error);
        const QString message = error != nullptr ? toText(error->message) : QString();
        g_clear_error(&error);
        if (m_control.isCancelled()) {
            return false;
        }
        if (walk.isTooMany) {
            skipEvent(event, u"it occurs too often"_s);
            return true;
        }
        if (walk.isTitleTooLong) {
            skipEvent(event, u"its title is too long"_s);
            return true;
        }
        if (isDone == FALSE && !message.isEmpty()) {
            skipEvent(event, logText(message));
            return true;
        }
        std::ranges::move(walk.events, std::back_inserter(m_outcome.events));
        return true;
    }

    std::optional<QString> reasonNotToExpand(ICalComponent *event, double from, double to)
    {
        int dates = 0;
        for (const ICalPropertyKind kind : {I_CAL_RDATE_PROPERTY, I_CAL_EXDATE_PROPERTY}) {
            dates += i_cal_component_count_properties(event, kind);
        }
        if (dates > maximumDates) {
            return u"it lists too many dates"_s;
        }
        double start = to;
        double end = to;
        firstOccurrence(event, start, end);
        for (const ICalPropertyKind kind : {I_CAL_RRULE_PROPERTY, I_CAL_EXRULE_PROPERTY}) {
            auto property = GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(event, kind));
            while (property) {
                const auto rule = GObjectRef<ICalRecurrence>::adopt(
                    kind == I_CAL_RRULE_PROPERTY ? i_cal_property_get_rrule(property.get())
                                                 : i_cal_property_get_exrule(property.get()));
                if (rule) {
                    if (auto reason = reasonNotToWalk(rule.get(), start, from, to)) {
                        return reason;
                    }
                }
                property = GObjectRef<ICalProperty>::adopt(i_cal_component_get_next_property(event, kind));
            }
        }
        return std::nullopt;
    }

    const ComponentGroup &m_group;
    const ExpansionRequest &m_request;
    ExpansionControl &m_control;
    ICalTimezone *m_defaultZone;
    GroupOutcome m_outcome;
    std::set<double> m_changed;
    std::set<qint64> m_changedDays;
    std::map<double, Rest> m_rests;
    double m_widest = 0;
    std::map<std::string, ICalTimezone *, std::less<>> m_zones;
};

bool isSeries(const ComponentGroup &group)
{
    return group.components.size() > 1 ||
           std::ranges::any_of(group.components, [](const GObjectRef<ICalComponent> &component) {
               return has(component.get(), I_CAL_RRULE_PROPERTY) ||
                      has(component.get(), I_CAL_RDATE_PROPERTY);
           });
}

QByteArray keyOf(const ComponentGroup &group, const QByteArray &zoneKey)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(zoneKey);
    for (const auto &component : group.components) {
        char *text = i_cal_component_as_ical_string(component.get());
        if (text != nullptr) {
            hash.addData(QByteArrayView(text));
            g_free(text);
        }
    }
    return hash.result();
}

QString titleOf(const ComponentGroup &group)
{
    return optionalText(i_cal_component_get_summary(group.components.front().get())).value_or(QString());
}

} // namespace

QString logText(const QString &text)
{
    constexpr qsizetype longest = 80;
    QString line = text.left(longest);
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control || character == u'\u2028' ||
            character == u'\u2029') {
            character = u' ';
        } else if (character == u'"') {
            character = u'\'';
        }
    }
    return text.size() > longest ? line + u'…' : line;
}

Expansion expandGroups(const std::vector<ComponentGroup> &groups, const ExpansionRequest &request,
                       ExpansionControl &control)
{
    ICalTimezone *defaultZone = i_cal_timezone_get_builtin_timezone(request.timeZoneId.constData());
    if (defaultZone == nullptr) {
        defaultZone = i_cal_timezone_get_utc_timezone();
    }
    Expansion expansion;
    const auto append = [&expansion](const ComponentGroup &group, const GroupOutcome &outcome) {
        if (!outcome.events.empty()) {
            expansion.occurring.insert(QByteArray(i_cal_component_get_uid(group.components.front().get())));
        }
        std::ranges::copy(outcome.events, std::back_inserter(expansion.events));
        std::ranges::copy(outcome.skippedEvents, std::back_inserter(expansion.skippedEvents));
    };
    for (const ComponentGroup &group : groups) {
        if (control.isCancelled()) {
            expansion.isComplete = false;
            break;
        }
        if (!isSeries(group)) {
            if (const auto outcome = GroupExpansion(group, request, control, defaultZone).run()) {
                append(group, *outcome);
            } else {
                expansion.isComplete = false;
            }
            continue;
        }
        const QByteArray key = keyOf(group, request.zoneKey);
        if (const auto known = request.knownSeries.find(key); known != request.knownSeries.end()) {
            append(group, *known->second);
            expansion.series.insert(*known);
            continue;
        }
        const std::size_t hash = qHash(key) | 1;
        if (request.suspects.contains(hash)) {
            expansion.skippedEvents.push_back(
                {key, u"title=\"%1\" reason=\"it takes too long to follow\""_s.arg(logText(titleOf(group)))});
            continue;
        }
        control.busyWith = hash;
        if (auto outcome = GroupExpansion(group, request, control, defaultZone).run()) {
            append(group, *outcome);
            expansion.series.emplace(key, std::make_shared<const GroupOutcome>(std::move(*outcome)));
        } else {
            expansion.isComplete = false;
        }
        control.busyWith = 0;
    }
    return expansion;
}

std::vector<ComponentGroup> groupByIdentifier(std::vector<GObjectRef<ICalComponent>> components)
{
    std::vector<ComponentGroup> groups;
    std::map<std::string, std::size_t, std::less<>> indices;
    for (auto &component : components) {
        if (i_cal_component_isa(component.get()) != I_CAL_VEVENT_COMPONENT) {
            continue;
        }
        const char *uid = i_cal_component_get_uid(component.get());
        if (uid == nullptr || *uid == '\0') {
            groups.push_back({{std::move(component)}});
            continue;
        }
        const auto [place, isNew] = indices.try_emplace(uid, groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        groups[place->second].components.push_back(std::move(component));
    }
    return groups;
}

std::set<QByteArray> timeZoneIdentifiers(ICalComponent *component)
{
    std::set<QByteArray> identifiers;
    i_cal_component_foreach_tzid(
        component,
        [](ICalParameter *parameter, gpointer data) {
            const char *tzid = i_cal_parameter_get_tzid(parameter);
            if (tzid != nullptr && *tzid != '\0') {
                static_cast<std::set<QByteArray> *>(data)->insert(QByteArray(tzid));
            }
        },
        &identifiers);
    return identifiers;
}

} // namespace corvane
