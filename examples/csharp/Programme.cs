// The streams of a programme as records, with the native texts that they point to: what a host has
// after it opened a media file.
//
// The programme is a text with a line for each stream: id, channels, sampling rate, bits, "pcm" or
// "dolby-e", labels. Lines that begin with "#" and empty ones are left out.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Runtime.InteropServices;

public sealed class Programme : IDisposable
{
    private readonly List<KestrelStream> streams = new List<KestrelStream>();
    private readonly List<IntPtr> texts = new List<IntPtr>();

    public void Read(string file)
    {
        foreach (string line in File.ReadLines(file))
        {
            if (line != "" && line[0] != '#') streams.Add(Stream(line));
        }
    }

    // The records are pinned during the call; the library keeps none of them.
    public IntPtr Analyse(string description)
    {
        KestrelStream[] records = streams.ToArray();
        GCHandle pinned = GCHandle.Alloc(records, GCHandleType.Pinned);
        IntPtr text = Marshal.StringToCoTaskMemUTF8(description);
        IntPtr order = Marshal.StringToCoTaskMemUTF8("");
        try
        {
            var request = new KestrelRequest
            {
                structSize = (uint)Marshal.SizeOf<KestrelRequest>(),
                streamCount = records.Length,
                layoutDescription = text,
                surroundChannelOrder = order,
                streams = pinned.AddrOfPinnedObject(),
                streamStride = (uint)Marshal.SizeOf<KestrelStream>(),
                surroundCheck = 1,
            };
            int status = Kestrel.kestrelAnalyse(ref request, out IntPtr analysis, out _, out _);
            if (status == Kestrel.KESTREL_OK) return analysis;
            throw new FormatException(Marshal.PtrToStringUTF8(Kestrel.kestrelStatusText(status)));
        }
        finally
        {
            Marshal.FreeCoTaskMem(order);
            Marshal.FreeCoTaskMem(text);
            pinned.Free();
        }
    }

    public void Dispose()
    {
        texts.ForEach(Marshal.FreeCoTaskMem);
        texts.Clear();
    }

    private KestrelStream Stream(string line)
    {
        string[] words = line.Split((char[])null, StringSplitOptions.RemoveEmptyEntries);
        if (words.Length < 5) throw new FormatException("this line describes no stream: " + line);
        byte coded = (byte)(words[4] == "dolby-e" ? 1 : 0);
        return new KestrelStream
        {
            structSize = (uint)Marshal.SizeOf<KestrelStream>(),
            group = streams.Count, // each stream is a group of its own
            streamId = Text(words[0]),
            trackLabels = Text(string.Join(" ", words.Skip(5))),
            channelCount = int.Parse(words[1]),
            formatKey1 = int.Parse(words[2]),
            formatKey2 = int.Parse(words[3]),
            formatKey3 = coded,
            isPairCoded = coded,
        };
    }

    private IntPtr Text(string text)
    {
        texts.Add(Marshal.StringToCoTaskMemUTF8(text));
        return texts[texts.Count - 1];
    }
}
