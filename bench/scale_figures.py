"""The figures that docs/scale.md reckons with: reads, processor time, results, reports.

usage: scale_figures.py PROGRAM MEDIA [--files N] [--lines N] [--pages N,N] [--megabytes N,N]

Needs strace, ffmpeg, gzip and zstd, and room for the results of all lines (2 kB each).
"""
import argparse
import json
import os
import pathlib
import re
import resource
import subprocess
import tempfile
import time

LEFT_OUT = {"mxf_reader_never_returns.mxf", "README.md", "make_dolby_e.py"}
# Containers of programmes: how they are made longer without encoding more.
LARGE = {"mxf": ["-map", "0"], "mov": ["-map", "0"], "ts": ["-map", "0:v", "-map", "0:a:0",
         "-c:a", "ac3"], "wav": ["-map", "0:a:0", "-c:a", "copy", "-rf64", "auto"]}


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True,
                          **options)


def measured(command, **options):
    """Seconds by the clock, of the processors, and the most memory of the process in MiB."""
    start = time.monotonic()
    with subprocess.Popen([str(word) for word in command], **options) as process:
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    clock = time.monotonic() - start
    return clock, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def make_clip(folder):
    """Two seconds of a programme: HD picture at 50 Mbit/s and eight tracks of 24 bits."""
    clip = folder / "clip.mov"
    tones = [f"sine={100 * n}:r=48000:d=2" for n in range(1, 9)]
    sources = [word for tone in tones for word in ("-f", "lavfi", "-i", tone)]
    maps = [word for n in range(9) for word in ("-map", str(n))]
    run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc2=s=1920x1080:r=25:d=2", *sources,
        *maps, "-c:v", "mpeg2video", "-b:v", "50M", "-minrate", "50M", "-maxrate", "50M",
        "-bufsize", "17M", "-g", "12", "-pix_fmt", "yuv422p", "-c:a", "pcm_s24le", clip)
    return clip


def make_large(clip, suffix, megabytes):
    file = clip.with_name(f"{suffix}_{megabytes}MB.{suffix}")
    run("ffmpeg", "-v", "error", "-stream_loop", "-1", "-i", clip, "-c", "copy", *LARGE[suffix],
        "-fs", f"{megabytes}M", file)
    return file


def calls_on(program, file, trace):
    """The system calls of an examination that name the file, as (call, result)."""
    subprocess.run(["strace", "-f", "-y", "-qq", "-s", "0", "-o", trace, program, "inspect", file],
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    name = re.escape(str(file))
    line = re.compile(rf'^\d+ +(\w+)\((?:\d+<{name}>|.*?"{name}").*\) = (-?\d+)')
    matches = map(line.match, trace.read_text(encoding="utf-8").splitlines())
    return [(match[1], int(match[2])) for match in matches if match]


def processor_time(program, file):
    """Of the program and its reader."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([program, "inspect", file], capture_output=True, check=False)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def show_reads(program, files, folder):
    """A seek asks no disk, so it is not counted. The time is of a program for this file alone."""
    print(f"{'file':32} {'bytes':>13} {'opened':>7} {'status':>7} {'reads':>7} {'bytes read':>12} "
          f"{'processor':>12}")
    total = [0, 0, 0, 0]
    for file in files:
        calls = calls_on(program, file, folder / "trace")
        reads = [result for call, result in calls if call in ("read", "pread64") and result > 0]
        counts = [sum(call == "openat" for call, _ in calls),
                  sum("stat" in call for call, _ in calls), len(reads), sum(reads)]
        total = [before + count for before, count in zip(total, counts)]
        print(f"{file.name:32} {file.stat().st_size:13,} {counts[0]:7} {counts[1]:7} "
              f"{counts[2]:7} {counts[3]:12,} {1000 * processor_time(program, file):9.0f} ms")
    mean = [value / len(files) for value in total]
    print(f"{'mean':46} {mean[0]:7.1f} {mean[1]:7.1f} {mean[2]:7.1f} {mean[3]:12,.0f}\n")


def packed(lines):
    """The more files are alike, the less they take."""
    text = b"".join(lines)
    sizes = [(name, len(run(name, "-c", input=text).stdout)) for name in ("gzip", "zstd")]
    return ", ".join(f"{name} {size / len(lines):,.0f}" for name, size in sizes)


def show_scan(program, media, count, folder):
    """On links to the test media, all of them in the page cache: what is left is processor time."""
    tree = folder / "tree"
    tree.mkdir()
    for index in range(count):
        source = media[index % len(media)]
        (tree / f"{index:07}{source.suffix}").symlink_to(source)
    results = folder / "results.jsonl"
    for jobs in (1, len(os.sched_getaffinity(0))):
        results.unlink(missing_ok=True)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        clock, _, _ = measured([program, "scan", tree, "-q", "--jobs", jobs, "-o", results])
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        worked = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        print(f"scan of {count} files, {jobs} job(s): {1000 * clock / count:.2f} ms each by the "
              f"clock, {1000 * worked / count:.2f} ms of processors")
    lines = results.read_bytes().splitlines(keepends=True)
    print(f"results: {sum(map(len, lines)) / count:,.0f} bytes each; packed by "
          f"{packed(lines)}; one of each kind by {packed(lines[:len(media)])}\n")
    return results


def write_lines(results, file, count):
    """As many results as asked for, of files with names of their own."""
    parts = []
    for line in results.read_text(encoding="utf-8").splitlines():
        name = json.dumps(json.loads(line)["file"], ensure_ascii=False)
        parts.append(line.split(name, 1))
    with file.open("w", encoding="utf-8") as lines, (file.with_name("list")).open("w") as names:
        for index in range(count):
            name = f"/archive/programmes/{index // 1000:04}/{index:08}.mxf"
            before, after = parts[index % len(parts)]
            lines.write(f'{before}"{name}"{after}\n')
            names.write(name + "\n")


def show_report(program, file, count, *options):
    page = file.with_name("report")
    clock, worked, memory = measured([program, "report", file, "-o", page, *options])
    words = " ".join(word for word in options if "/" not in word)
    print(f"report {words} of {count:,} lines: {clock:.1f} s ({worked:.1f} s of the processor), "
          f"{memory:,.0f} MiB, writes {page.stat().st_size:,} bytes", flush=True)
    page.unlink()


def numbers(text):
    return [int(word) for word in text.split(",") if word]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("media", type=pathlib.Path)
    parser.add_argument("--files", type=int, default=2000)
    parser.add_argument("--lines", type=int, default=1_000_000)
    parser.add_argument("--pages", type=numbers, default=[10_000, 100_000])
    parser.add_argument("--megabytes", type=numbers, default=[100, 1000, 4000])
    options = parser.parse_args()
    program = options.program.resolve()
    media = sorted(file.resolve() for file in options.media.iterdir() if file.name not in LEFT_OUT)
    with tempfile.TemporaryDirectory() as directory:
        folder = pathlib.Path(directory)
        show_reads(program, media, folder)
        clip = make_clip(folder)
        for suffix in LARGE:
            large = [make_large(clip, suffix, size) for size in options.megabytes]
            show_reads(program, large, folder)
            for file in large:
                file.unlink()
        results = show_scan(program, media, options.files, folder)
        lines = folder / "lines.jsonl"
        for count in options.pages:
            write_lines(results, lines, count)
            show_report(program, lines, count, "--format", "html")
        write_lines(results, lines, options.lines)
        print(f"{options.lines:,} lines: {lines.stat().st_size:,} bytes")
        show_report(program, lines, options.lines, "--format", "text")
        show_report(program, lines, options.lines, "--format", "text", "--files-from",
                    str(lines.with_name("list")))


main()
