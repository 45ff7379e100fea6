// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"

#include "Corvane/Platform/Linux/EvolutionData/FileCalendar.h"
#include "Corvane/Platform/Linux/EvolutionData/FolderListing.h"
#include "Corvane/Platform/Linux/EvolutionData/QueryDeadline.h"
#include "Corvane/Platform/Linux/EvolutionData/RememberedCalendars.h"
#include "Corvane/Platform/Linux/EvolutionData/SharedEvents.h"
#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace corvane {

namespace {

/// Whether a folder exists is known at once, unless the disk hangs.
constexpr auto availabilityTimeout = 500ms;
/// How long it may take to determine which events the files name.
constexpr auto indexTime = 1000ms;

} // namespace

class IcsFolders::Impl : public std::enable_shared_from_this<Impl> {
public:
    Impl(std::shared_ptr<CalendarServices> services, const QStringList &folders)
        : m_services(std::move(services))
    {
        for (const QString &folder : folders) {
            m_folders.push_back(QFile::encodeName(folder));
        }
    }

    void close()
    {
        m_isClosed = true;
        for (const auto &[path, file] : m_files) {
            file->close();
        }
    }

    static QCoro::Task<std::expected<bool, Failure>> checkAvailability(std::shared_ptr<Impl> self,
                                                                       QDeadlineTimer deadline)
    {
        if (!self->m_availabilityCheck) {
            self->m_availabilityCheck =
                startOnPool(self->m_services->files.threads(),
                            [folders = self->m_folders] { return isAnyFolderThere(folders); });
        }
        const auto looking = *self->m_availabilityCheck;
        const bool isKnown =
            co_await looking.until(std::min(deadline, QDeadlineTimer(availabilityTimeout, Qt::PreciseTimer)));
        if (!isKnown) {
            // For now, a disk that hangs counts as absent, unless its files are remembered.
            co_return co_await self->m_remembered.areThere(deadline);
        }
        self->m_availabilityCheck.reset();
        co_return *looking.value();
    }

    static QCoro::Task<CalendarAnswers> query(std::shared_ptr<Impl> self, CalendarQuestion question,
                                              QDeadlineTimer deadline)
    {
        CalendarAnswers answers;
        const QDeadlineTimer inTime = answerDeadline(deadline);
        co_await list(self, inTime, deadline, answers);
        answers.isThere = self->m_isThere;
        const Files files = self->m_files;
        // A file that hangs must not delay the others.
        co_await findShared(self, files, std::min(inTime, QDeadlineTimer(indexTime, Qt::PreciseTimer)));
        std::vector<QCoro::Task<void>> tasks;
        tasks.reserve(files.size());
        for (const auto &[path, file] : files) {
            tasks.push_back(SourceCalendar::query(file, question, inTime, deadline, answers));
        }
        for (auto &task : tasks) {
            co_await task;
        }
        co_await self->m_shared.answer(question, sharedTexts(files, question), deadline, answers);
        co_return answers;
    }

private:
    using Files = std::map<QByteArray, std::shared_ptr<FileCalendar>>;

    /// Tells each file which of its events other files name, too.
    static QCoro::Task<void> findShared(std::shared_ptr<Impl> self, Files files, QDeadlineTimer inTime)
    {
        std::vector<QCoro::Task<void>> tasks;
        tasks.reserve(files.size());
        for (const auto &[path, file] : files) {
            tasks.push_back(FileCalendar::index(file, inTime));
        }
        for (auto &task : tasks) {
            co_await task;
        }
        std::map<QByteArray, FileCalendar::Identifiers> identifiers;
        for (const auto &[path, file] : files) {
            identifiers.emplace(path, file->identifiers());
        }
        // Counting the identifiers of a large calendar takes longer than the rest of a load.
        if (identifiers == self->m_identifiers) {
            co_return;
        }
        std::map<IdentifierKey, int> count;
        for (const auto &[path, ofFile] : identifiers) {
            for (const IdentifierKey identifier : *ofFile) {
                ++count[identifier];
            }
        }
        self->m_identifiers = std::move(identifiers);
        for (const auto &[path, file] : files) {
            std::set<IdentifierKey> shared;
            std::ranges::copy_if(*file->identifiers(), std::inserter(shared, shared.end()),
                                 [&count](IdentifierKey identifier) { return count[identifier] > 1; });
            file->setShared(std::move(shared));
        }
    }

    static std::vector<QByteArray> sharedTexts(const Files &files, const CalendarQuestion &question)
    {
        std::vector<QByteArray> texts;
        for (const auto &[path, file] : files) {
            if (const QByteArray text = file->sharedText(question); !text.isEmpty()) {
                texts.push_back(text);
            }
        }
        return texts;
    }

    static QCoro::Task<void> list(std::shared_ptr<Impl> self, QDeadlineTimer inTime, QDeadlineTimer deadline,
                                  CalendarAnswers &answers)
    {
        if (!self->m_listing) {
            self->m_listing = startOnPool(self->m_services->files.threads(),
                                          [folders = self->m_folders] { return listFolders(folders); });
        }
        const auto listing = *self->m_listing;
        if (co_await listing.until(inTime)) {
            self->m_listing.reset();
            const std::shared_ptr<FolderListing> &found = listing.value();
            self->updateFiles(*found);
            if (!found->errors.empty()) {
                co_await addRemembered(self, u"its folder cannot be read"_s, deadline, *found);
            }
            co_return;
        }
        self->logFolderError(u"they could not be read in time"_s);
        if (self->m_files.empty()) {
            co_await addRemembered(self, u"its folder did not answer in time"_s, deadline);
            if (self->m_files.empty() && self->m_isThere) {
                answers.silent = 1;
                answers.error = u"The calendar folders did not answer in time."_s;
            }
            self->m_isThere = self->m_isThere || !self->m_files.empty();
        }
    }

    /// Adds remembered files of which it is unknown whether they still exist: all, or those that `listing`
    /// could not determine.
    static QCoro::Task<void> addRemembered(std::shared_ptr<Impl> self, QString reason,
                                           QDeadlineTimer deadline,
                                           std::optional<FolderListing> listing = std::nullopt)
    {
        const QStringList identifiers = co_await self->m_remembered.identifiers(deadline);
        for (const QString &identifier : identifiers) {
            const QByteArray path = FileCalendar::pathOf(identifier);
            if (!self->m_files.contains(path) && (!listing || listing->isUnknown(path))) {
                const auto file = std::make_shared<FileCalendar>(self->m_services, path);
                file->setUnreachable(reason);
                self->m_files.emplace(path, file);
            }
        }
    }

    void updateFiles(const FolderListing &listing)
    {
        m_isThere = listing.isAnyFolderThere;
        logFolderError(QString());
        Files files;
        for (const auto &[path, stamp] : listing.files) {
            const auto known = m_files.find(path);
            const auto file =
                known != m_files.end() ? known->second : std::make_shared<FileCalendar>(m_services, path);
            file->setStamp(stamp);
            files.emplace(path, file);
        }
        for (const auto &[path, file] : m_files) {
            if (files.contains(path)) {
                continue;
            }
            if (listing.isUnknown(path)) {
                files.emplace(path, file);
            } else {
                file->close();
                file->forget();
            }
        }
        m_files = std::move(files);
        for (const auto &[folder, error] : listing.errors) {
            if (!m_folderErrors.contains(folder)) {
                m_services->log(u"calendar folder unreadable path=\"%1\" reason=\"%2\""_s.arg(
                    logText(QFile::decodeName(folder)), logText(error)));
            }
        }
        m_folderErrors = listing.errors;
    }

    void logFolderError(const QString &error)
    {
        if (error != m_loggedError && !m_isClosed) {
            m_services->log(error.isEmpty() ? u"calendar folders answer again"_s
                                            : u"calendar folders did not answer reason=\"%1\""_s.arg(error));
        }
        m_loggedError = error;
    }

    std::shared_ptr<CalendarServices> m_services;
    std::vector<QByteArray> m_folders;
    bool m_isThere = false;
    bool m_isClosed = false;
    std::optional<Pending<std::shared_ptr<bool>>> m_availabilityCheck;
    std::optional<Pending<std::shared_ptr<FolderListing>>> m_listing;
    Files m_files;
    /// The files' identifiers when their shared events were last determined.
    std::map<QByteArray, FileCalendar::Identifiers> m_identifiers;
    SharedEvents m_shared{m_services};
    RememberedCalendars m_remembered{m_services, FileCalendar::identifierPrefix};
    std::map<QByteArray, QString> m_folderErrors;
    QString m_loggedError;
};

IcsFolders::IcsFolders(std::shared_ptr<CalendarServices> services, const QStringList &folders)
    : m_impl(std::make_shared<Impl>(std::move(services), folders))
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

QCoro::Task<CalendarAnswers> IcsFolders::query(CalendarQuestion question, QDeadlineTimer deadline)
{
    return Impl::query(m_impl, std::move(question), deadline);
}

void IcsFolders::close()
{
    m_impl->close();
}

} // namespace corvane
