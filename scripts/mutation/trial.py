"""A copy of the tree with its own build, in which one change after the other is tried."""
import os
import resource
import shutil
import subprocess

# Of the processor's time, so that a busy machine is not taken for a loop without an end.
MOST_SECONDS = 240
MOST_MEMORY = 24 << 30


def limit():
    resource.setrlimit(resource.RLIMIT_CPU, (MOST_SECONDS, MOST_SECONDS))
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(command, folder, **options):
    return subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options).returncode


class Copy:
    def __init__(self, root, number):
        self.folder = os.path.join(root, "build", "mutate", str(number))
        wanted = [path for path in subprocess.check_output(["git", "ls-files"], cwd=root, text=True).split("\n")
                  if path.startswith(("tslbl/", "tests/", "cmake/", "CMake")) and os.path.exists(os.path.join(root, path))]
        self._forget_others(wanted)
        for path in wanted: self._take(root, path)
        configure = ["cmake", "-G", "Ninja", "-B", "build", "-DCMAKE_BUILD_TYPE=Release", "-DTSLBL_BUILD_TOOL=OFF",
                     "-DCMAKE_CXX_FLAGS_RELEASE=-O1"]
        if run(configure, self.folder) != 0 or not self.build(): raise SystemExit("mutate: the tree cannot be built")

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

    def build(self):
        return run(["ninja", "-C", "build", "tslbl_tests"], self.folder) == 0

    def fails(self, tests):
        return run(["build/bin/tslbl_tests", "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={tests}"],
                   self.folder, preexec_fn=limit) != 0

    def try_change(self, change, tests):
        """`tests` are filters, the likeliest to notice it first."""
        file = os.path.join(self.folder, change.source.path)
        text = change.source.text
        changed = text[:change.place] + change.new + text[change.place + len(change.old):]
        try:
            open(file, "w").write(changed)
            if not self.build(): return "does not compile"
            return "caught" if any(self.fails(filter) for filter in tests) else "survived"
        finally:
            open(file, "w").write(text)
