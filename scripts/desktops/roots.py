# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Debian roots, created once and reused. The roots of a release share apt's downloads."""
import os
import pathlib
import shutil
import subprocess

from packages import COMMON

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"
USER = "teacher"

# The mounts end with the namespace. Without network access, a root has only a loopback interface of its own.
ENTER = """
root=$1 shared=$2 suite=$3 network=$4
shift 4
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev"
mount -t tmpfs tmpfs "$root/dev/shm"
mount --rbind /sys "$root/sys"
mount -t tmpfs -o mode=1777 tmpfs "$root/tmp"
mount -t tmpfs tmpfs "$root/run"
mkdir -p "$shared/apt-$suite/archives/partial" "$shared/apt-$suite/lists/partial"
mount --bind "$shared/apt-$suite/archives" "$root/var/cache/apt/archives"
mount --bind "$shared/apt-$suite/lists" "$root/var/lib/apt/lists"
for pair in $BINDS; do
    mkdir -p "$root${pair#*=}"
    mount --bind "${pair%%=*}" "$root${pair#*=}"
done
[ "$network" = yes ] || ip link set lo up
exec chroot "$root" /usr/bin/env -i PATH=""" + PATH + """ LC_ALL=C.UTF-8 HOME=/root "$@"
"""


class Roots:
    """A folder of roots."""

    def __init__(self, folder):
        self.folder = folder
        folder.mkdir(parents=True, exist_ok=True)

    def command(self, root, suite, *command, network=False):
        """The command line that runs a command in a root, in new namespaces."""
        options = ["--mount", "--pid", "--ipc", "--fork", "--kill-child", *([] if network else ["--net"])]
        return ["unshare", *options, "bash", "-ec", ENTER, "enter", str(root), str(self.folder), suite,
                "yes" if network else "no", *command]

    def run(self, root, suite, *command, log):
        """Runs a command in a root, with network access; exits if it fails."""
        with log.open("ab") as output:
            done = subprocess.run(self.command(root, suite, *command, network=True), stdin=subprocess.DEVNULL,
                                  stdout=output, stderr=output, env={**os.environ, "BINDS": ""}, check=False)
        if done.returncode != 0:
            last = "\n".join(log.read_text(errors="replace").splitlines()[-20:])
            raise SystemExit(f"{' '.join(command)[:200]} failed in {root}:\n{last}")

    def install(self, root, suite, packages, log):
        self.run(root, suite, "env", "DEBIAN_FRONTEND=noninteractive", "apt-get", "-q", "-y",
                 "-o", "Binary::apt-get::APT::Keep-Downloaded-Packages=true", "install", "--no-install-recommends",
                 *packages, log=log)

    def base(self, suite):
        """The root of which the desktops' roots are copies; created if missing."""
        made = self.folder / f"{suite}-base"
        if made.exists():
            return made
        print(f"Creating a {suite} root.", flush=True)
        unfinished = self.folder / f"{suite}-base.unfinished"
        shutil.rmtree(unfinished, ignore_errors=True)
        log = self.folder / f"{suite}-base.log"
        log.unlink(missing_ok=True)
        with log.open("ab") as output:
            subprocess.run(["debootstrap", "--variant=minbase", suite, str(unfinished), mirror()], check=True,
                           stdout=output, stderr=output)
        unfinished.chmod(0o755)
        # Packages must not start services.
        policy = unfinished / "usr/sbin/policy-rc.d"
        policy.write_text("#!/bin/sh\nexit 101\n")
        policy.chmod(0o755)
        self.run(unfinished, suite, "apt-get", "-q", "update", log=log)
        self.install(unfinished, suite, COMMON, log)
        self.run(unfinished, suite, "useradd", "--create-home", "--shell", "/bin/bash", USER, log=log)
        unfinished.rename(made)
        return made

    def desktop(self, wanted):
        """The root of a desktop; created if missing."""
        made = self.folder / wanted.name
        if made.exists():
            return made
        base = self.base(wanted.suite)
        print(f"Installing {wanted.desktop} into a {wanted.suite} root.", flush=True)
        unfinished = self.folder / f"{wanted.name}.unfinished"
        shutil.rmtree(unfinished, ignore_errors=True)
        subprocess.run(["cp", "-a", "--reflink=auto", str(base), str(unfinished)], check=True)
        log = self.folder / f"{wanted.name}.log"
        log.unlink(missing_ok=True)
        self.install(unfinished, wanted.suite, wanted.packages, log)
        unfinished.rename(made)
        return made

    def put_in(self, wanted, package):
        """Installs this package of Quillet in the root of a desktop, unless it is already installed."""
        root = self.desktop(wanted)
        told = root / "var/lib/quillet-package"
        if told.exists() and told.read_text() == package.name:
            return root
        shutil.copy(package, root / "root/quillet.deb")
        log = self.folder / f"{wanted.name}.log"
        self.install(root, wanted.suite, ["--reinstall", "--allow-downgrades", "/root/quillet.deb"], log)
        told.write_text(package.name)
        return root


def mirror():
    """The mirror that this machine's apt uses."""
    sites = subprocess.run(["apt-get", "indextargets", "--format", "$(SITE)", "Created-By: Packages"],
                           capture_output=True, text=True, check=True).stdout.split()
    if not sites:
        raise SystemExit("apt has no mirror configured.")
    return sites[0]
