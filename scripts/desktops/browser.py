# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""A full-screen browser with a page that reports its keys and its size."""
import http.server
import threading
import urllib.parse

PAGE = b"""<!DOCTYPE html><title>A call</title><body style="background: rgb(96,64,128); margin: 0">
<script>
const tell = (what, value) => fetch('/' + what + '?' + encodeURIComponent(value));
addEventListener('keydown', event => tell('key', event.key));
setInterval(() => tell('state', [innerHeight === screen.height, document.hasFocus()].join()), 500);
</script>"""

PREFERENCES = """user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("termsofuse.bypassNotification", true);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("full-screen-api.warning.timeout", 0);
"""


class Page:
    """Serves the page and records its reports."""

    def __init__(self):
        page = self
        self.keys, self.state = [], ""

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                path, _, query = self.path.partition("?")
                if path == "/key":
                    page.keys.append(urllib.parse.unquote(query))
                elif path == "/state":
                    page.state = urllib.parse.unquote(query)
                self.send_response(200)
                self.send_header("Content-Type", "text/html")
                self.end_headers()
                self.wfile.write(PAGE if path == "/" else b"")

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.address = f"http://127.0.0.1:{self.server.server_port}/"

    def start_browser(self, session, environment):
        profile = session.room / "browser"
        profile.mkdir(exist_ok=True)
        (profile / "user.js").write_text(PREFERENCES)
        return session.start("browser", "firefox-esr", "--no-remote", "--profile", str(profile), "--kiosk",
                             self.address, environment=environment)
