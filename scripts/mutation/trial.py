"""A copy of the tree with its own build, in which one change after the other is tried."""
import os
import re
import resource
import shutil
import signal
import subprocess

# Of the processor's time, so that a busy machine is not taken for a loop without an end.
MOST_SECONDS = 60
MOST_MEMORY = 8 << 30

# What a changed program can bring upon itself; any other signal comes from outside.
OWN_SIGNALS = (signal.SIGABRT, signal.SIGBUS, signal.SIGFPE, signal.SIGILL, signal.SIGSEGV, signal.SIGTRAP, signal.SIGXCPU)
REFUSED = re.compile(r"^\S+:\d+(?::\d+)?: (?:fatal )?error: |undefined (?:reference|symbol)", re.M)
# They compile the kernels once more and compare them: whatever is changed, it is changed in all of them.
LEFT_OUT = ("PlainKernels.cpp", "Avx2Kernels.cpp", "KernelVariantsTest.cpp")


class Disturbed(Exception):
    """A trial that was ended from outside and says nothing about the change."""


def limit():
    # Beyond the first limit comes SIGXCPU; at the second it would be SIGKILL, as if from outside.
    resource.setrlimit(resource.RLIMIT_CPU, (MOST_SECONDS, MOST_SECONDS + 10))
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def fails(code):
    """Whether a test program that ended with `code` has seen the change."""
    if code < 0 and -code not in OWN_SIGNALS:
        raise Disturbed(f"the tests were ended by {signal.Signals(-code).name} from outside")
    return code != 0


def refused(code, output):
    """Whether a build ended because the compiler or the linker refuses the change."""
    if code != 0 and not REFUSED.search(output): raise Disturbed(f"the build ended without an error of the code: {output[-400:]}")
    return code != 0


class Copy:
    def __init__(self, root, number):
        self.folder = os.path.join(root, "build", "mutate", str(number))
        wanted = [path for path in subprocess.check_output(["git", "ls-files"], cwd=root, text=True).split("\n")
                  if path.startswith(("tslbl/", "tests/", "cmake/", "CMake")) and os.path.exists(os.path.join(root, path))
                  and os.path.basename(path) not in LEFT_OUT]
        self._forget_others(wanted)
        for path in wanted: self._take(root, path)
        configure = ["cmake", "-G", "Ninja", "-B", "build", "-DCMAKE_BUILD_TYPE=Release", "-DTSLBL_BUILD_TOOL=OFF",
                     "-DCMAKE_CXX_FLAGS_RELEASE=-O1"]
        if shutil.which("ld.lld"): configure.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld")
        subprocess.run(configure, cwd=self.folder, stdout=subprocess.DEVNULL, check=True)
        if not self.builds(): raise SystemExit("mutate: the tree cannot be built")

    def _forget_others(self, wanted):
        for folder in ("tslbl", "tests", "cmake"):
            for place, _, names in os.walk(os.path.join(self.folder, folder)):
                for name in names:
                    path = os.path.join(place, name)
                    if os.path.relpath(path, self.folder) not in wanted: os.remove(path)

    def _take(self, root, path):
        """Copies a file that differs, so that what was built of the others stays."""
        source, target = os.path.join(root, path), os.path.join(self.folder, path)
        if os.path.exists(target) and open(source, "rb").read() == open(target, "rb").read(): return
        os.makedirs(os.path.dirname(target), exist_ok=True)
        shutil.copyfile(source, target)

    def builds(self):
        build = subprocess.run(["ninja", "-C", "build", "tslbl_tests"], cwd=self.folder, text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, errors="replace")
        return not refused(build.returncode, build.stdout)

    def fails(self, tests):
        run = subprocess.run(["build/bin/tslbl_tests", "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={tests}"],
                             cwd=self.folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=limit)
        return fails(run.returncode)

    def try_change(self, change, tests):
        """`tests` are filters, the likeliest to notice it first. Throws Disturbed."""
        file = os.path.join(self.folder, change.source.path)
        text = change.source.text
        changed = text[:change.place] + change.new + text[change.place + len(change.old):]
        try:
            open(file, "w").write(changed)
            if not self.builds(): return "does not compile"
            return "caught" if any(self.fails(filter) for filter in tests) else "survived"
        finally:
            open(file, "w").write(text)
