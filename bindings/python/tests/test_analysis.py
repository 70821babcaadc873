"""Service maps: what is found, and what a finding says."""

import dataclasses
import unittest

import kestrel
from kestrel import FindingCode, Outcome, Stream, StreamType, Track

SIX = "L R C LFE Ls Rs"


class ServiceMapTest(unittest.TestCase):
    def test_a_clean_file_carries_its_services(self) -> None:
        found = kestrel.service_map([Stream("1", 6, SIX), Stream("2", 2)], "T8=5.1 Mix,Stereo")
        self.assertIs(found.outcome, Outcome.FILLED)
        self.assertEqual(found.track_total, 8)
        self.assertEqual(found.findings, ())
        self.assertEqual(found.described_totals, (8,))
        mix, stereo = found.services
        self.assertEqual((mix.index, mix.stream_type, mix.label), (0, StreamType.MIX_51, SIX))
        self.assertEqual(mix.tracks, tuple(Track(1, 0, 0, i) for i in range(6)))
        self.assertEqual((stereo.index, stereo.stream_type), (1, StreamType.STEREO))
        self.assertEqual((stereo.track_count, stereo.label), (2, ""))
        self.assertIs(found.check(), found)

    def test_every_field_of_a_stream_arrives(self) -> None:
        streams = [
            Stream("7", 1, group=3, format_keys=(1, 2, 3), is_pair_coded=True, is_pair_shared=True),
            Stream("8", 1, group=4, format_keys=(4, 5, 6), is_pair_coded=True, is_pair_shared=True),
        ]
        found = kestrel.service_map(streams, "T2=EMCA")
        self.assertTrue(all(service.is_emca for service in found.services))
        tracks = [service.tracks for service in found.services]
        self.assertEqual(tracks, [(Track(7, 3, 3, 0),), (Track(8, 3, 4, 1),)])

    def test_services_behind_a_hyphen_are_reported_on_demand(self) -> None:
        streams = [Stream("1", 4)]
        plain = kestrel.service_map(streams, "T4=-Stereo,Stereo")
        self.assertEqual([service.index for service in plain.services], [1])
        full = kestrel.service_map(streams, "T4=-Stereo,Stereo", report_all=True)
        self.assertEqual([service.requested for service in full.services], [False, True])

    def test_labels_are_checked_unless_told_otherwise(self) -> None:
        streams = [Stream("1", 6, "L R")]
        self.assertEqual(len(kestrel.service_map(streams, "T6=5.1 Mix").findings), 4)
        unchecked = kestrel.service_map(streams, "T6=5.1 Mix", surround_check=False)
        self.assertEqual(unchecked.findings, ())

    def test_an_unknown_service_has_no_tracks(self) -> None:
        found = kestrel.service_map([Stream("1", 2)], "T2=Other,Stereo")
        self.assertEqual(found.services[0].track_count, -1)
        self.assertEqual(found.services[0].tracks, ())
        self.assertIs(found.services[0].stream_type, StreamType.UNKNOWN)

    def test_texts_need_not_be_ascii(self) -> None:
        order = "Gauche à droite 🎧 \U0010ffff"
        found = kestrel.service_map([Stream("1é", 6, "🎧 L")], "é;T6=5.1 Mix,Ste", order=order)
        self.assertEqual(found.services[0].label, order)
        finding = found.findings[-1]
        self.assertEqual((finding.text_offset, finding.text_length), (14, 3))

    def test_many_streams_arrive_in_order(self) -> None:
        streams = [Stream(str(n), 0) for n in range(20_000)] + [Stream("77", 2)]
        found = kestrel.service_map(streams, "T2=Stereo")
        self.assertEqual([track.track_number for track in found.services[0].tracks], [77, 77])

    def test_results_do_not_change(self) -> None:
        found = kestrel.service_map([Stream("1", 2)], "T2=Stereo")
        for record, field in ((found, "outcome"), (found.services[0], "label")):
            with self.assertRaises(dataclasses.FrozenInstanceError):
                setattr(record, field, None)


class FindingTest(unittest.TestCase):
    def test_fields_that_a_code_does_not_use_are_none(self) -> None:
        found = kestrel.service_map([Stream("1", 7)], "T8=5.1 Mix,Stereo;T2=Stereo")
        (finding,) = found.findings
        self.assertIs(finding.code, FindingCode.NO_ENTRY)
        self.assertTrue(finding.is_error)
        self.assertEqual((finding.first, finding.second), (7, 0))
        self.assertEqual(
            {finding.service, finding.slot, finding.stream, finding.track, finding.text_offset},
            {None},
        )
        self.assertIn("7", finding.sentence)
        self.assertEqual(found.described_totals, (8, 2))

    def test_fields_that_a_code_uses_are_numbers(self) -> None:
        streams = [Stream("-1", 1, format_keys=(8, 0, 0)), Stream("-1-b", 1), Stream("-2", 1)]
        (finding,) = kestrel.service_map(streams, "T3=Mono,Stereo").findings or (None,)
        self.assertIsNone(finding)
        streams[0] = Stream("-3", 1, format_keys=(8, 0, 0))
        (finding,) = kestrel.service_map(streams, "T3=Stereo,Mono").findings
        self.assertIs(finding.code, FindingCode.KEY1_DIFFERS)
        self.assertEqual((finding.service, finding.slot, finding.stream), (0, 1, 1))
        self.assertEqual((finding.track, finding.first, finding.second), (-1, 8, 0))

    def test_a_description_without_entries_has_no_totals(self) -> None:
        found = kestrel.service_map([Stream("1", 7)], "")
        self.assertEqual(found.described_totals, ())

    def test_notes_are_no_errors(self) -> None:
        found = kestrel.service_map([Stream("1", 8)], "T8=Stereo")
        self.assertEqual([finding.is_error for finding in found.findings], [False])
        self.assertIs(found.check(), found)


if __name__ == "__main__":
    unittest.main()
