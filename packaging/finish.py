"""Adds to the files of a package what it holds about itself: the notices of the libraries that go
along with Kestrel, and the list of what is shipped. Debian packages are also given Debian's places.

usage: finish.py ROOT PREFIX --package NAME --version VERSION --contact "NAME <ADDRESS>"
                 --kind TGZ|DEB|ZIP --objdump OBJDUMP
"""

import argparse
import email.utils
import gzip
import json
import pathlib

import debian_packages
import making
import shipped_libraries
import spdx

PACKAGING = pathlib.Path(__file__).resolve().parent


def files_below(root):
    return sorted(path.relative_to(root) for path in root.rglob("*") if path.is_file())


def compress(text, target):
    """The same bytes for the same text, whenever it is done."""
    target.write_bytes(gzip.compress(text, 9, mtime=0))


def debian_changelog(version, contact):
    """Debian has a form of its own; what changed is told once, in CHANGELOG.md."""
    date = email.utils.format_datetime(making.time())
    lines = [f"kestrel ({version}) unstable; urgency=medium", "", "  * See CHANGELOG.md.gz.", "",
             f" -- {contact}  {date}", ""]
    return "\n".join(lines).encode()


def move_to_debians_places(prefix, documents, version, contact):
    compress(debian_changelog(version, contact), documents / "changelog.gz")
    changes = (PACKAGING.parent / "CHANGELOG.md").read_bytes()
    compress(changes, documents / "CHANGELOG.md.gz")
    for manual in prefix.glob("share/man/man1/*.1"):
        compress(manual.read_bytes(), manual.with_name(manual.name + ".gz"))
        manual.unlink()
    completion = prefix / "share/zsh/site-functions"
    if completion.exists():
        completion.rename(completion.with_name("vendor-completions"))


def notices(links, bundled):
    """What the packages say whose code goes along: by headers, or as DLLs."""
    compiled_in = {link.library for link in links if link.kind == "STATIC_LINK"}
    parts = [(PACKAGING / "copyright").read_text(encoding="utf-8")]
    for package in sorted(compiled_in | set(bundled.values())):
        head = f"Contains parts of {package.name} {package.version}, of which Debian says:"
        parts.append(f"{head}\n\n{debian_packages.copyright_of(package)}")
    return ("\n" + "=" * 78 + "\n\n").join(parts)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("root", type=pathlib.Path, help="the files of the package")
    parser.add_argument("prefix", help="where in there bin, lib and share are")
    parser.add_argument("--package", required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--contact", required=True)
    parser.add_argument("--kind", choices=["TGZ", "DEB", "ZIP"], required=True)
    parser.add_argument("--objdump", required=True)
    return parser.parse_args()


def main():
    options = arguments()
    root, prefix = options.root, options.root / options.prefix
    documents = prefix / "share/doc" / options.package
    documents.mkdir(parents=True, exist_ok=True)
    if options.kind == "DEB":
        move_to_debians_places(prefix, documents, options.version, options.contact)
    files = files_below(root)
    links = shipped_libraries.links(root, files, options.objdump, options.version)
    bundled = shipped_libraries.bundled(root, files)
    (documents / "copyright").write_text(notices(links, bundled), encoding="utf-8")
    shipped = files_below(root)
    listed = documents / f"{options.package}.spdx.json"
    head = spdx.Head(options.package, options.version, listed.relative_to(root).as_posix())
    content = spdx.document(root, shipped, head, links, bundled)
    listed.write_text(json.dumps(content, indent=1) + "\n", encoding="utf-8")


main()
