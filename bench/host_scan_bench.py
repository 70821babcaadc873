"""A scan beside the same reads by mediainfo alone, on one and on all cores, and its memory.

usage: host_scan_bench.py PROGRAM MEDIA [--files N] [--many N] [--repeat N]

Times are taken in turn in one run, and only their ratios mean something. Each is the best of the
repetitions, since what else the machine does only adds to it. Processor time (of the process and
all that it starts) shows what the work costs on a machine that is not idle too.
"""
import argparse
import os
import pathlib
import resource
import subprocess
import tempfile
import time

# The reader never returns from one of the test files, and the others are no media.
LEFT_OUT = {"mxf_reader_never_returns.mxf", "README.md", "make_dolby_e.py"}


def make_tree(folder, media, count):
    """Many names of few files: directories of 100 links each."""
    sources = sorted(file for file in media.iterdir() if file.name not in LEFT_OUT)
    for index in range(count):
        place = folder / f"{index // 100:03}"
        place.mkdir(parents=True, exist_ok=True)
        source = sources[index % len(sources)]
        (place / f"{index:05}{source.suffix}").symlink_to(source.resolve())


def processor_time():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def seconds(command):
    """By the clock and of the processors."""
    start, worked = time.monotonic(), processor_time()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    return time.monotonic() - start, processor_time() - worked


def scan(program, tree, jobs):
    return [program, "scan", tree, "--jobs", str(jobs), "-q"]


def mediainfo(tree, jobs):
    return ["sh", "-c", f"find '{tree}' -type l -print0 | xargs -0 -n 1 -P {jobs} "
            "mediainfo --Output=JSON -f"]


def peak_memory(command):
    """The most that the process itself ever held, in KiB; its readers do not count."""
    peak = 0
    with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
        while process.poll() is None:
            try:
                status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
                peaks = [line for line in status.splitlines() if line.startswith("VmHWM")]
                peak = max([peak] + [int(line.split()[1]) for line in peaks])
            except OSError:
                pass
            time.sleep(0.02)
    return peak


def show(text, value, goal, is_good):
    print(f"{text:58} {value:8.2f}   goal {goal:8} {'ok' if is_good else 'MISSED'}")


def compare_times(program, tree, repeat):
    cores = len(os.sched_getaffinity(0))
    commands = {
        "scan, all cores": scan(program, tree, cores),
        "mediainfo, all cores": mediainfo(tree, cores),
        "scan, one job": scan(program, tree, 1),
        "mediainfo, one job": mediainfo(tree, 1),
    }
    times = {name: [] for name in commands}
    for _ in range(repeat):
        for name, command in commands.items():
            times[name].append(seconds(command))
    best = {name: min(clock for clock, _ in values) for name, values in times.items()}
    for name, value in best.items():
        worked = min(work for _, work in times[name])
        print(f"{name:58} {value:8.2f} s   processors {worked:8.2f} s")
    speedup = best["scan, one job"] / best["scan, all cores"]
    show(f"{cores} cores against one job", speedup, ">= 1.8", speedup >= 1.8)
    for jobs in ["all cores", "one job"]:
        ratio = best[f"scan, {jobs}"] / best[f"mediainfo, {jobs}"]
        show(f"scan against mediainfo, {jobs}", ratio, "<= 1.3", ratio <= 1.3)


def compare_memory(program, few, many, counts):
    peaks = [peak_memory(scan(program, tree, len(os.sched_getaffinity(0)))) for tree in (few, many)]
    for count, peak in zip(counts, peaks):
        print(f"{f'memory of a scan of {count} files':58} {peak / 1024:8.2f} MiB")
    ratio = peaks[1] / peaks[0]
    show(f"memory of {counts[1]} files against {counts[0]}", ratio, "<= 1.2", ratio <= 1.2)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("media", type=pathlib.Path)
    parser.add_argument("--files", type=int, default=1000)
    parser.add_argument("--many", type=int, default=10000)
    parser.add_argument("--repeat", type=int, default=3)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        few, many = pathlib.Path(directory) / "few", pathlib.Path(directory) / "many"
        make_tree(few, options.media, options.files)
        make_tree(many, options.media, options.many)
        compare_times(options.program, few, options.repeat)
        compare_memory(options.program, few, many, [options.files, options.many])


main()
