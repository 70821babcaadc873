"""Prints how descriptions are read, each laid over a file of so many plain mono tracks."""

import kestrel

EXAMPLES = [
    (8, "T8=5.1 Mix,Stereo;T4=Stereo,Stereo"),
    (4, "T8=5.1 Mix,Stereo;T4=Stereo,Stereo"),
    (4, "T4=Stereo,Stereo;T4=Mono,Mono,Mono,Mono"),
    (2, "T8=5.1 Mix,Stereo;T4=Stereo,Stereo"),
    (2, "T02=Stereo"),
    (2, "any words T2=Stereo; and more"),
    (4, "T4=Stereo,-Stereo"),
    (2, "T2=stereo"),
    (2, "T2=Stereo "),
    (4, "T4=Stereo, Stereo"),
    (4, "T4=Stereo,,Stereo"),
    (4, "T4=Stereo,Stereo,"),
    (2, "T4=Stereo,Stereo T2=Stereo"),
    (2, "T2=Dolby E"),
    (2, "T2=EMCA"),
]

for total, description in EXAMPLES:
    streams = [kestrel.Stream(str(n), 1) for n in range(1, total + 1)]
    found = kestrel.service_map(streams, description, surround_check=False)
    print(f'{total} tracks, "{description}": {found.outcome.name}')
    for service in found.services:
        tracks = ",".join(str(track.track_number) for track in service.tracks)
        print(f"    {service.stream_type.display_name} on tracks {tracks or 'none'}")
    for finding in found.findings:
        print(f"    ({finding.sentence})")
