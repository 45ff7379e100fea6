// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"
#include "Corvane/Platform/Linux/Pending.h"

#include <QFile>
#include <QSet>

#include <malloc.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// More files, folders or levels of folders are no teacher's.
constexpr std::size_t maximumFiles = 5'000;
constexpr std::size_t maximumFolders = 5'000;
constexpr int maximumLevels = 32;
/// Whether a folder exists is told at once; where it is not, the disk hangs.
constexpr auto availabilityTimeout = 500ms;
/// What is kept of the time limit for drawing the conclusions.
constexpr auto conclusionTime = 300ms;
constexpr int workerThreads = 3;
/// What the taking apart of a larger file has cost is given back to the system at once. In bytes.
constexpr qint64 largeFile = 1'000'000;

/// Tells one state of a file from another.
struct Stamp {
    qint64 size = 0;
    qint64 seconds = 0;
    qint64 nanoseconds = 0;
    quint64 inode = 0;

    friend bool operator==(const Stamp &, const Stamp &) = default;
};

Stamp stampOf(const struct stat &status)
{
    return {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ino};
}

/// The files of the folders.
struct Listing {
    bool isAnyFolderThere = false;
    std::map<QByteArray, Stamp> files;
    /// Folders that cannot be read, and why.
    std::map<QByteArray, QString> errors;
};

bool isIcs(const std::string &name)
{
    constexpr std::string_view ending = ".ics";
    return name.size() > ending.size() &&
           std::equal(
               ending.begin(), ending.end(), name.end() - static_cast<std::ptrdiff_t>(ending.size()),
               [](char left, char right) { return left == std::tolower(static_cast<unsigned char>(right)); });
}

class Lister {
public:
    Listing run(const std::vector<QByteArray> &folders)
    {
        for (const QByteArray &folder : folders) {
            struct stat status = {};
            if (::stat(folder.constData(), &status) == 0 && S_ISDIR(status.st_mode)) {
                m_listing.isAnyFolderThere = true;
                read(folder, status, 0);
            }
        }
        return std::move(m_listing);
    }

private:
    void read(const QByteArray &folder, const struct stat &status, int level)
    {
        // Each folder once: links may lead round in circles.
        if (level > maximumLevels || m_seen.size() >= maximumFolders ||
            !m_seen.emplace(status.st_dev, status.st_ino).second) {
            return;
        }
        std::error_code error;
        std::filesystem::directory_iterator entry(folder.constData(), error);
        for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
            const std::string path = entry->path().string();
            struct stat found = {};
            if (::stat(path.c_str(), &found) != 0) {
                continue;
            }
            const QByteArray name(path.data(), static_cast<qsizetype>(path.size()));
            if (S_ISDIR(found.st_mode)) {
                read(name, found, level + 1);
            } else if (S_ISREG(found.st_mode) && isIcs(entry->path().filename().string()) &&
                       m_listing.files.size() < maximumFiles) {
                m_listing.files.emplace(name, stampOf(found));
            }
        }
        if (error) {
            m_listing.errors.emplace(folder, QString::fromStdString(error.message()));
        }
    }

    Listing m_listing;
    std::set<std::pair<dev_t, ino_t>> m_seen;
};

/// What a file says, or why it is left out.
struct FileContent {
    QString error;
    Expansion expansion;
};

FileContent readCalendars(const QByteArray &path, const ExpansionRequest &request, ExpansionControl &control)
{
    FileContent content;
    if (control.isCancelled()) {
        content.expansion.isComplete = false;
        return content;
    }
    const auto bytes = readCalendarFile(path, IcsFolders::maximumFileSize);
    if (!bytes) {
        content.error = bytes.error();
        return content;
    }
    auto calendars = readCalendarText(*bytes);
    if (!calendars) {
        content.error = calendars.error().reason;
        return content;
    }
    content.expansion = expandGroups(groupsOf(std::move(*calendars)), request, control);
    return content;
}

/// A file, and what is known of it.
struct File {
    Stamp stamp;
    DateInterval interval;
    QByteArray timeZoneId;
    /// What the file says for all of the above.
    bool isRead = false;
    QString error;
    std::vector<CalendarEvent> events;

    struct LastAnswer {
        DateInterval interval;
        std::vector<CalendarEvent> events;
    };
    std::optional<LastAnswer> lastAnswer;

    std::map<QByteArray, std::shared_ptr<const GroupOutcome>> knownSeries;
    std::set<std::size_t> suspects;

    /// A reading that is under way, and what it reads.
    std::optional<Pending<std::shared_ptr<FileContent>>> reading;
    std::shared_ptr<ExpansionControl> control;

    bool isSilent = false;
    QString loggedError;
    QSet<QByteArray> loggedSkips;
};

} // namespace

class IcsFolders::Impl : public std::enable_shared_from_this<Impl> {
public:
    Impl(DebugLogService &log, const QStringList &folders, TimeZoneId timeZoneId)
        : m_log(log)
        , m_timeZoneId(std::move(timeZoneId))
    {
        for (const QString &folder : folders) {
            m_folders.push_back(QFile::encodeName(folder));
        }
    }

    void close()
    {
        m_isClosed = true;
        for (const auto &[path, file] : m_files) {
            if (file->control) {
                file->control->cancel();
            }
        }
    }

    static QCoro::Task<std::expected<bool, Failure>> checkAvailability(std::shared_ptr<Impl> self,
                                                                       QDeadlineTimer deadline)
    {
        if (!self->m_availabilityCheck) {
            self->m_availabilityCheck = startOnPool(self->m_workers.threads(), [folders = self->m_folders] {
                return std::ranges::any_of(folders, [](const QByteArray &folder) {
                    struct stat status = {};
                    return ::stat(folder.constData(), &status) == 0 && S_ISDIR(status.st_mode);
                });
            });
        }
        const auto looking = *self->m_availabilityCheck;
        const bool isKnown =
            co_await looking.until(std::min(deadline, QDeadlineTimer(availabilityTimeout, Qt::PreciseTimer)));
        if (!isKnown) {
            // A disk that hangs is as good as none, for now.
            co_return false;
        }
        self->m_availabilityCheck.reset();
        co_return *looking.value();
    }

    static QCoro::Task<CalendarAnswers> query(std::shared_ptr<Impl> self, DateInterval interval,
                                              QDeadlineTimer deadline)
    {
        CalendarAnswers answers;
        const QDeadlineTimer inTime(
            std::max(deadline.remainingTimeAsDuration() - conclusionTime, std::chrono::nanoseconds(50ms)),
            Qt::PreciseTimer);
        const QByteArray timeZoneId = self->m_timeZoneId();
        if (!self->m_listing) {
            self->m_listing = startOnPool(self->m_workers.threads(),
                                          [folders = self->m_folders] { return Lister().run(folders); });
        }
        const auto listing = *self->m_listing;
        if (co_await listing.until(inTime)) {
            self->m_listing.reset();
            self->updateFiles(*listing.value());
        } else {
            self->logFolderError(u"they could not be read in time"_s);
            answers.silent = self->m_files.empty() && self->m_isThere ? 1 : 0;
            answers.error = u"The calendar folders did not answer in time."_s;
        }
        answers.isThere = self->m_isThere;
        const std::map<QByteArray, std::shared_ptr<File>> files = self->m_files;
        for (const auto &[path, file] : files) {
            self->startReading(path, *file, interval, timeZoneId);
        }
        for (const auto &[path, file] : files) {
            if (file->reading) {
                const auto reading = *file->reading;
                if (!co_await reading.until(inTime)) {
                    file->control->cancel();
                    if (!co_await reading.until(deadline)) {
                        if (const std::size_t suspect = file->control->busyWith; suspect != 0) {
                            file->suspects.insert(suspect);
                        }
                    }
                }
            }
            self->finishReading(path, *file);
            self->conclude(path, *file, interval, timeZoneId, answers);
        }
        co_return answers;
    }

private:
    void updateFiles(const Listing &listing)
    {
        m_isThere = listing.isAnyFolderThere;
        logFolderError(QString());
        std::map<QByteArray, std::shared_ptr<File>> files;
        for (const auto &[path, stamp] : listing.files) {
            const auto known = m_files.find(path);
            const auto file = known != m_files.end() ? known->second : std::make_shared<File>();
            if (file->stamp != stamp) {
                file->stamp = stamp;
                file->isRead = false;
                file->suspects.clear();
            }
            files.emplace(path, file);
        }
        m_files = std::move(files);
        for (const auto &[folder, error] : listing.errors) {
            if (!m_folderErrors.contains(folder)) {
                m_log(u"calendar folder unreadable path=\"%1\" reason=\"%2\""_s.arg(
                    logText(QFile::decodeName(folder)), logText(error)));
            }
        }
        m_folderErrors = listing.errors;
    }

    void startReading(const QByteArray &path, File &file, DateInterval interval, const QByteArray &timeZoneId)
    {
        finishReading(path, file);
        if (file.reading || (file.isRead && file.interval == interval && file.timeZoneId == timeZoneId)) {
            return;
        }
        if (file.interval != interval || file.timeZoneId != timeZoneId) {
            file.knownSeries.clear();
        }
        file.isRead = false;
        file.interval = interval;
        file.timeZoneId = timeZoneId;
        if (file.stamp.size > maximumFileSize) {
            file.isRead = true;
            file.error = u"it is too large"_s;
            file.events.clear();
            return;
        }
        file.control = std::make_shared<ExpansionControl>();
        ExpansionRequest request{interval, timeZoneId, {}, {}, file.knownSeries, file.suspects, {}};
        const bool isLarge = file.stamp.size > largeFile;
        file.reading = startOnPool(m_workers.threads(),
                                   [path, isLarge, request = std::move(request), control = file.control] {
                                       FileContent content = readCalendars(path, request, *control);
                                       if (isLarge) {
                                           ::malloc_trim(0);
                                       }
                                       return content;
                                   });
    }

    /// Takes over what a reading that has ended found.
    void finishReading(const QByteArray &path, File &file)
    {
        if (!file.reading || !file.reading->isResolved()) {
            return;
        }
        FileContent content = std::move(*file.reading->value());
        file.reading.reset();
        file.control.reset();
        file.knownSeries = std::move(content.expansion.series);
        if (!content.expansion.isComplete) {
            return;
        }
        file.isRead = true;
        file.error = content.error;
        file.events = std::move(content.expansion.events);
        QSet<QByteArray> logged;
        for (const SkippedEvent &skipped : content.expansion.skippedEvents) {
            if (!file.loggedSkips.contains(skipped.key) && !logged.contains(skipped.key)) {
                m_log(u"calendar event left out calendar=\"%1\" %2"_s.arg(logText(QFile::decodeName(path)),
                                                                          skipped.text));
            }
            logged.insert(skipped.key);
        }
        file.loggedSkips = std::move(logged);
    }

    void conclude(const QByteArray &path, File &file, DateInterval interval, const QByteArray &timeZoneId,
                  CalendarAnswers &answers)
    {
        const QString name = logText(QFile::decodeName(path));
        if (file.isRead && file.interval == interval && file.timeZoneId == timeZoneId) {
            if (file.isSilent) {
                file.isSilent = false;
                m_log(u"calendar answers again name=\"%1\""_s.arg(name));
            }
            if (file.error != file.loggedError) {
                file.loggedError = file.error;
                m_log(file.error.isEmpty() ? u"calendar file read again path=\"%1\""_s.arg(name)
                                           : u"calendar file left out path=\"%1\" reason=\"%2\""_s.arg(
                                                 name, logText(file.error)));
            }
            if (file.error.isEmpty()) {
                ++answers.answered;
                std::ranges::copy(file.events, std::back_inserter(answers.events));
            }
            file.lastAnswer = File::LastAnswer{interval, file.events};
            return;
        }
        const bool standsIn = file.lastAnswer && file.lastAnswer->interval == interval;
        if (!file.isSilent && !m_isClosed) {
            file.isSilent = true;
            m_log(u"calendar did not answer name=\"%1\" step=\"read\" reason=\"it took too long\" "
                  "lastAnswerStands=%2"_s.arg(name, standsIn ? u"yes"_s : u"no"_s));
        }
        if (standsIn) {
            ++answers.answered;
            std::ranges::copy(file.lastAnswer->events, std::back_inserter(answers.events));
        } else {
            ++answers.silent;
            answers.error = u"The calendar file \"%1\" could not be read in time."_s.arg(name);
        }
    }

    void logFolderError(const QString &error)
    {
        if (error != m_loggedError && !m_isClosed) {
            m_log(error.isEmpty() ? u"calendar folders answer again"_s
                                  : u"calendar folders did not answer reason=\"%1\""_s.arg(error));
        }
        m_loggedError = error;
    }

    CalendarLog m_log;
    TimeZoneId m_timeZoneId;
    std::vector<QByteArray> m_folders;
    WorkerPool m_workers{workerThreads};
    bool m_isThere = false;
    bool m_isClosed = false;
    std::optional<Pending<std::shared_ptr<bool>>> m_availabilityCheck;
    std::optional<Pending<std::shared_ptr<Listing>>> m_listing;
    std::map<QByteArray, std::shared_ptr<File>> m_files;
    std::map<QByteArray, QString> m_folderErrors;
    QString m_loggedError;
};

IcsFolders::IcsFolders(DebugLogService &log, const QStringList &folders, TimeZoneId timeZoneId)
    : m_impl(std::make_shared<Impl>(log, folders, std::move(timeZoneId)))
{
}

IcsFolders::~IcsFolders()
{
    m_impl->close();
}

QCoro::Task<std::expected<bool, Failure>> IcsFolders::checkAvailability(QDeadlineTimer deadline)
{
    return Impl::checkAvailability(m_impl, deadline);
}

QCoro::Task<CalendarAnswers> IcsFolders::query(DateInterval interval, QDeadlineTimer deadline)
{
    return Impl::query(m_impl, interval, deadline);
}

void IcsFolders::close()
{
    m_impl->close();
}

} // namespace corvane
