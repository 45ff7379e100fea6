# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Quillet's package for a release, built from the last commit; rebuilt only if its sources have changed."""
import hashlib
import pathlib
import shutil
import subprocess

from roots import SOURCE

# The sources of the package.
PARTS = ("CMakeLists.txt", "CMakePresets.json", "Corvane", "NotificationAgent", "cmake", "packaging",
         "scripts/package", "scripts/packages", "scripts/make-sound")


def _trees():
    """A hash of these sources in the last commit."""
    listed = subprocess.run(["git", "ls-tree", "HEAD", *PARTS], cwd=SOURCE, capture_output=True, check=True).stdout
    return hashlib.sha256(listed).hexdigest()[:12]


def _own_release():
    lines = pathlib.Path("/etc/os-release").read_text().splitlines()
    return next((line.split("=")[1].strip('"') for line in lines if line.startswith("VERSION_CODENAME=")), "")


def package_for(roots, suite):
    kept = roots.folder / "packages" / f"quillet-{suite}-{_trees()}.deb"
    if kept.exists():
        return kept
    kept.parent.mkdir(exist_ok=True)
    print(f"Building the package for {suite}; this takes some minutes.", flush=True)
    if suite == _own_release():
        command, place = ["scripts/package"], SOURCE
    else:
        root = roots.folder / f"{suite}-build"
        command = ["scripts/prove-from-nothing", "--suite", suite, "--keep", str(root), "scripts/package"]
        place = root / "root/quillet"
    log = kept.with_suffix(".log")
    with log.open("wb") as output:
        done = subprocess.run(command, cwd=SOURCE, stdin=subprocess.DEVNULL, stdout=output, stderr=output, check=False)
    if done.returncode != 0:
        raise SystemExit(f"The package was not built; see {log}.")
    (made,) = (path for path in (place / "build/package").glob("quillet_*.deb"))
    shutil.copy(made, kept)
    return kept
