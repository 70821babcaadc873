"""What the tests of the packages share: running programs, and using what a package brought."""

import os
import pathlib
import shlex
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[2]
MEDIA = SOURCE / "tests/media/mxf_8mono_mca.mxf"
LAYOUT = "T8=5.1 Mix,Stereo"
OTHER_LAYOUT = "T8=Stereo,5.1 Mix,EMCA"
BINARIES = SOURCE / "tests/structure/check_binaries.py"
SERVICE_MAP = SOURCE / "tests/consumers/service_map.c"
SERVICE_MAP_SHOWN = (SOURCE / "bindings/python/example.out").read_text()


def run(*command, **options):
    """The finished process; a failure does not raise."""
    done = subprocess.run(command, capture_output=True, text=True, check=False, **options)
    done.stdout = done.stdout.replace("\r\n", "\n")
    return done


def output(*command, **options):
    done = run(*command, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} failed:\n{done.stdout}{done.stderr}")
    return done.stdout


def only(folder, pattern):
    found = sorted(folder.glob(pattern))
    assert len(found) == 1, f"{pattern} in {folder}: {found}"
    return found[0]


class Use:
    """A tree with bin, lib and include, and how programs for it are built and run."""

    def __init__(self, prefix, compiler, emulator="", media_json=None):
        self.prefix = prefix
        self.compiler = compiler
        self.emulator = shlex.split(emulator)
        self.media_json = media_json
        self.suffix = ".exe" if self.emulator else ""

    def kestrel(self, *arguments):
        return run(*self.emulator, self.prefix / f"bin/kestrel{self.suffix}", *arguments)

    def inspect(self, layout):
        """The exit code of looking at a media file, or on Windows at what is said of it."""
        media = [MEDIA] if not self.media_json else ["--streams-from", self.media_json]
        return self.kestrel("inspect", *media, "--layout", layout).returncode

    def check_protection(self):
        """Raises unless the program and the library are protected as those of the build tree."""
        library = next(self.prefix.glob("lib/**/libkestrel-dll64.so"))
        output(sys.executable, "-B", BINARIES, "--shipped", self.prefix / "bin/kestrel",
               "--shipped", library)

    def build_service_map(self, program):
        """Compiles a host by the package's pkg-config file alone."""
        paths = {**os.environ, "PKG_CONFIG_LIBDIR": str(self.prefix / "lib/pkgconfig")}
        flags = shlex.split(output("pkg-config", "--cflags", "--libs", "kestrel", env=paths))
        output(self.compiler, SERVICE_MAP, *flags, "-o", program)

    def run_service_map(self, folder):
        """What a host prints that was built against the package."""
        if self.emulator:
            folder = self.prefix / "bin"  # where Windows looks for the library
        program = folder / f"service_map{self.suffix}"
        self.build_service_map(program)
        libraries = {"LD_LIBRARY_PATH": str(self.prefix / "lib")}
        return output(*self.emulator, program, env={**os.environ, **libraries})
