"""Lists what a package ships, as an SPDX 2.3 document in JSON: every file with its checksums, the
libraries that the programs are linked with and their versions, and what was taken from where."""

import hashlib
import re
import urllib.parse
import uuid
from typing import NamedTuple

import making

NO_ASSERTION = "NOASSERTION"
PACKAGE_ID = "SPDXRef-Package-kestrel"


class Head(NamedTuple):
    """What is listed, and in which file of the package the list will stand."""

    package: str
    version: str
    list_name: str


def identifier(kind, name):
    return f"SPDXRef-{kind}-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)


def file_id(name):
    return identifier("File", name)


def file_entry(root, path):
    content = (root / path).read_bytes()
    sums = {"SHA1": hashlib.sha1(content), "SHA256": hashlib.sha256(content)}
    return {
        "SPDXID": file_id(str(path)),
        "fileName": f"./{path.as_posix()}",
        "checksums": [
            {"algorithm": name, "checksumValue": made.hexdigest()} for name, made in sums.items()
        ],
        "licenseConcluded": NO_ASSERTION,
        "licenseInfoInFiles": [NO_ASSERTION],
        "copyrightText": NO_ASSERTION,
    }


def verification_code(entries):
    sums = sorted(entry["checksums"][0]["checksumValue"] for entry in entries)
    return hashlib.sha1("".join(sums).encode()).hexdigest()


def own_package(head, entries):
    return {
        "SPDXID": PACKAGE_ID,
        "name": head.package,
        "versionInfo": head.version,
        "supplier": NO_ASSERTION,
        "downloadLocation": NO_ASSERTION,
        "filesAnalyzed": True,
        "packageVerificationCode": {
            "packageVerificationCodeValue": verification_code(entries),
            "packageVerificationCodeExcludedFiles": [f"./{head.list_name}"],
        },
        "licenseConcluded": NO_ASSERTION,
        "licenseDeclared": NO_ASSERTION,
        "licenseInfoFromFiles": [NO_ASSERTION],
        "copyrightText": NO_ASSERTION,
    }


def library_id(library):
    return identifier("Library", library.name)


def library_package(library):
    entry = {
        "SPDXID": library_id(library),
        "name": library.name,
        "versionInfo": library.version,
        "downloadLocation": NO_ASSERTION,
        "filesAnalyzed": False,
        "licenseConcluded": NO_ASSERTION,
        "licenseDeclared": NO_ASSERTION,
        "copyrightText": NO_ASSERTION,
    }
    if library.architecture:
        version = urllib.parse.quote(library.version, safe="")
        locator = f"pkg:deb/debian/{library.name}@{version}?arch={library.architecture}"
        entry["externalRefs"] = [
            {
                "referenceCategory": "PACKAGE-MANAGER",
                "referenceType": "purl",
                "referenceLocator": locator,
            }
        ]
    return entry


def relationship(subject, kind, related):
    return {
        "spdxElementId": subject,
        "relationshipType": kind,
        "relatedSpdxElement": related,
    }


def relationships(entries, links, bundled):
    found = [relationship("SPDXRef-DOCUMENT", "DESCRIBES", PACKAGE_ID)]
    found += [relationship(PACKAGE_ID, "CONTAINS", entry["SPDXID"]) for entry in entries]
    for link in links:
        related = file_id(link.own_file) if link.own_file else library_id(link.library)
        found.append(relationship(file_id(link.user), link.kind, related))
    for name, library in sorted(bundled.items()):
        found.append(relationship(library_id(library), "CONTAINS", file_id(name)))
    return found


def created():
    return making.time().strftime("%Y-%m-%dT%H:%M:%SZ")


def document(root, files, head, links, bundled):
    """The list of the files below a root."""
    entries = [file_entry(root, path) for path in files]
    libraries = {link.library for link in links if link.library} | set(bundled.values())
    code = verification_code(entries)
    namespace = uuid.uuid5(uuid.NAMESPACE_OID, f"{head.package} {head.version} {code} {created()}")
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"{head.package}-{head.version}",
        "documentNamespace": f"urn:uuid:{namespace}",
        "creationInfo": {"created": created(), "creators": ["Tool: kestrel-packaging"]},
        "packages": [own_package(head, entries), *map(library_package, sorted(libraries))],
        "files": entries,
        "relationships": relationships(entries, links, bundled),
    }
