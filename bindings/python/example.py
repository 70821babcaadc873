"""Prints which tracks of a file of eight mono streams carry which service."""

import kestrel

labels = ["L", "R", "Ls", "Rs", "C", "LFE", "L", "R"]
streams = [kestrel.Stream(str(n), 1, label) for n, label in enumerate(labels, start=1)]
found = kestrel.service_map(streams, "T8=5.1 Mix,Stereo;T4=Stereo,Stereo")
for service in found.check().services:
    tracks = " ".join(str(track.track_number) for track in service.tracks)
    print(f"{service.stream_type.display_name}: tracks {tracks} {service.label}".rstrip())
for finding in found.findings:
    print(finding.sentence)
