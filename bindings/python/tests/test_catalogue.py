"""The catalogue: rows, items, names and layout codes."""

import unittest

import kestrel
from kestrel import Status, StreamType, catalogue


class CatalogueTest(unittest.TestCase):
    def test_rows_rise_by_their_tracks(self) -> None:
        self.assertEqual([row.tracks for row in catalogue.rows()], [2, 4, 6, 8, 10, 12, 16])

    def test_items_ascend_through_the_rows(self) -> None:
        self.assertEqual([item.id for item in catalogue.items()], list(range(41)))
        for row in catalogue.rows():
            self.assertEqual({item.row for item in row.items}, {row.id})
            self.assertIs(row.default, row.items[0])

    def test_streams_of_an_item_fill_the_tracks_of_its_row(self) -> None:
        for row in catalogue.rows():
            for item in row.items:
                self.assertEqual(sum(type.tracks for type in item.stream_types), row.tracks)

    def test_an_item_is_described_in_full(self) -> None:
        item = catalogue.item(40)
        self.assertEqual(item.name, "5.1 Mix + 2x Mono + Stereo + 6x Mono")
        self.assertEqual(item.row, 6)
        self.assertEqual(item.stream_types[:4], (2, 0, 0, 1))
        self.assertEqual(item.stream_names[:5], ("5.1 Mix", "Mono 1", "Mono 2", "Stereo", "Mono 3"))
        self.assertEqual(item.text, "5.1 Mix,Mono,Mono,Stereo" + 6 * ",Mono")

    def test_names_and_texts_lead_back_to_items(self) -> None:
        for item in catalogue.items():
            self.assertEqual(catalogue.item_from_name(item.name), item)
            self.assertEqual(catalogue.item_from_text(item.text).stream_types, item.stream_types)

    def test_stream_types_have_names(self) -> None:
        names = ["Mono", "Stereo", "5.1 Mix", "7.1 Mix", "Dolby E", "EMCA", "unknown"]
        self.assertEqual([type.display_name for type in StreamType], names)
        for type in list(StreamType)[:5]:
            self.assertIs(catalogue.stream_type_from_name(type.display_name), type)

    def test_layout_codes_stand_for_items(self) -> None:
        self.assertEqual(catalogue.item_from_layout_code("EBU R 123: 8b").id, 7)
        codes = {code.code: code.item.id for code in catalogue.layout_codes()}
        self.assertEqual(len(codes), 22)
        self.assertEqual(codes["16f"], 36)


class UnknownTest(unittest.TestCase):
    def refused(self, status: Status, call: object, *arguments: object) -> None:
        assert callable(call)
        with self.assertRaises(kestrel.KestrelError) as raised:
            call(*arguments)
        self.assertIs(raised.exception.status, status)

    def test_ids(self) -> None:
        for id in (-1, 41, 2**31 - 1, -(2**31)):
            self.refused(Status.UNKNOWN_ID, catalogue.item, id)
        self.refused(Status.UNKNOWN_ID, lambda: StreamType.EMCA.tracks)

    def test_an_id_beyond_32_bits_is_not_cut_off(self) -> None:
        for id in (2**32, 2**40, -(2**32)):
            self.assertRaises(OverflowError, catalogue.item, id)

    def test_texts(self) -> None:
        for text in ("", "stereo", "Stéréo", "🎧", "Stereo "):
            self.refused(Status.UNKNOWN_NAME, catalogue.item_from_name, text)
            self.refused(Status.UNKNOWN_NAME, catalogue.item_from_text, text)
            self.refused(Status.UNKNOWN_NAME, catalogue.stream_type_from_name, text)
            self.refused(Status.UNKNOWN_NAME, catalogue.item_from_layout_code, text)

    def test_a_text_is_not_cut_off_at_a_nul(self) -> None:
        self.assertRaises(ValueError, catalogue.item_from_name, "Stereo\0x")


if __name__ == "__main__":
    unittest.main()
