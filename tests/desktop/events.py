# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Calendars as iCalendar text. Moments are seconds since 1970."""
import datetime


def utc(moment):
    return datetime.datetime.fromtimestamp(moment, datetime.timezone.utc).strftime("%Y%m%dT%H%M%SZ")


def event(title, start, end, uid=None, extra=()):
    """One event as iCalendar lines."""
    uid = uid or f"{title[:40]}-{int(start)}".replace(" ", "-")
    return "\r\n".join(["BEGIN:VEVENT", f"UID:{uid}", f"DTSTAMP:{utc(start - 86400)}", f"DTSTART:{utc(start)}",
                        f"DTEND:{utc(end)}", f"SUMMARY:{title}", *extra, "END:VEVENT", ""])


def calendar(*events):
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Quillet//Test//EN\r\n" + "".join(events) + "END:VCALENDAR\r\n"
