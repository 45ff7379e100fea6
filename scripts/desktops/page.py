# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Writes the page: a table of all desktops, then the steps of each with their pictures."""
import html
import json

from packages import ROOTS

STYLE = """body { font: 15px/1.5 sans-serif; margin: 2em; color: #222 } table { border-collapse: collapse }
td, th { border: 1px solid #ccc; padding: 3px 8px; text-align: left; vertical-align: top }
.right { background: #d8f2dc } .wrong { background: #f8d0cc } .to { background: #fff0c2 } .not { background: #e8e8e8 }
figure { display: inline-block; margin: 6px } img { max-width: 420px; max-height: 300px; border: 1px solid #ccc }
figcaption { font-size: 13px }"""


def _class(result):
    return result.split()[0]


def _section(result):
    lines = [f"<h2 id='{result['key']}'>{result['desktop']}, {result['suite']}</h2>",
             f"<p>{html.escape(result['version'])}, {result['session']}, {result['seconds']} s.</p><table>"]
    for step in result["steps"]:
        pictures = "".join(
            f"<figure><a href='{result['key']}/{name}'><img loading='lazy' src='{result['key']}/{name}' "
            f"alt='{html.escape(what)}'></a><figcaption>{html.escape(what)}</figcaption></figure>"
            for name, what in step["pictures"])
        name, found = html.escape(step["name"]), step["result"]
        lines.append(f"<tr><th>{name}</th><td class='{_class(found)}'>{found}</td><td>"
                     f"{html.escape(' '.join(step['notes']))}<br>{pictures}</td></tr>")
    return "\n".join([*lines, "</table>"])


def write_page(folder):
    results = []
    for root in ROOTS:
        path = folder / root.name / "results.json"
        if path.exists():
            results.append({"key": root.name, **json.loads(path.read_text())})
    names = list(dict.fromkeys(step["name"] for result in results for step in result["steps"]))
    rows = []
    for name in names:
        cells = []
        for result in results:
            found = next((step["result"] for step in result["steps"] if step["name"] == name), "not seen")
            cells.append(f"<td class='{_class(found)}'>{found}</td>")
        rows.append(f"<tr><th>{html.escape(name)}</th>{''.join(cells)}</tr>")
    heads = "".join(f"<th><a href='#{result['key']}'>{result['key']}</a></th>" for result in results)
    page = folder / "index.html"
    page.write_text("\n".join([
        "<!DOCTYPE html><meta charset='utf-8'><title>Quillet on real desktops</title>", f"<style>{STYLE}</style>",
        "<h1>Quillet on real desktops</h1>",
        "<p>“To be looked at”: only a person can judge; see the pictures. “Not seen”: the desktop lacks it, or "
        "cannot do it in a headless root; the step says which.</p>",
        f"<table><tr><th></th>{heads}</tr>", *rows, "</table>", *map(_section, results)]) + "\n")
    return page
