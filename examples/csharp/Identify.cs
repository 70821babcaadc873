// Names the layouts of the catalogue that a programme's tracks could carry.
//
// usage: identify PROGRAMME
//
// PROGRAMME: see Programme.cs. The exit code is 0 when there is such a layout, 1 when there is none,
// and 2 when the programme cannot be used.
using System;
using System.IO;
using System.Linq;
using System.Runtime.InteropServices;

public static class Identify
{
    public static int Main(string[] arguments)
    {
        if (arguments.Length != 1 || Kestrel.kestrelAbiVersion() != Kestrel.KESTREL_ABI)
        {
            Console.Error.WriteLine(
                "usage: identify PROGRAMME, with interface " + Kestrel.KESTREL_ABI);
            return 2;
        }
        using (var programme = new Programme())
        {
            try
            {
                programme.Read(arguments[0]);
                return Print(programme) > 0 ? 0 : 1;
            }
            catch (Exception error) when (error is IOException || error is FormatException
                || error is OverflowException)
            {
                Console.Error.WriteLine("identify: " + error.Message);
                return 2;
            }
        }
    }

    private static int Print(Programme programme)
    {
        int fitting = 0;
        for (int item = 0; item < CatalogueItems(); ++item)
        {
            IntPtr analysis = programme.Analyse(Description(item));
            try
            {
                if (Outcome(analysis) != Kestrel.KESTREL_FILLED) continue;
                Console.WriteLine(ItemName(item) + ": " + Services(analysis));
                ++fitting;
            }
            finally
            {
                Kestrel.kestrelFreeAnalysis(analysis);
            }
        }
        return fitting;
    }

    private static int CatalogueItems()
    {
        Kestrel.kestrelCatalogueSize(out _, out int items, out _);
        return items;
    }

    private static string ItemName(int item)
    {
        Kestrel.kestrelItemName(item, out IntPtr name);
        return Marshal.PtrToStringUTF8(name);
    }

    // The text that asks for a layout, "T8=5.1 Mix,Stereo"; it calls every pair-coded service EMCA.
    private static string Description(int item)
    {
        Kestrel.kestrelItemRow(item, out int row);
        Kestrel.kestrelRowTracks(row, out int tracks);
        Kestrel.kestrelItemStreamTypes(item, null, UIntPtr.Zero, out UIntPtr needed);
        var types = new int[(int)needed];
        Kestrel.kestrelItemStreamTypes(item, types, needed, out needed);
        return "T" + tracks + "=" + string.Join(",", types.Select(TypeName));
    }

    private static string TypeName(int type)
    {
        if (type == Kestrel.KESTREL_DOLBY_E || type == Kestrel.KESTREL_EMCA) return "EMCA";
        Kestrel.kestrelStreamTypeName(type, out IntPtr name);
        return Marshal.PtrToStringUTF8(name);
    }

    private static int Outcome(IntPtr analysis)
    {
        Kestrel.kestrelOutcome(analysis, out int outcome, out _);
        return outcome;
    }

    private static string Services(IntPtr analysis)
    {
        Kestrel.kestrelServiceCount(analysis, out int count);
        return string.Join(", ", Enumerable.Range(0, count).Select(i => Service(analysis, i)));
    }

    private static string Service(IntPtr analysis, int index)
    {
        var service = new KestrelService { structSize = (uint)Marshal.SizeOf<KestrelService>() };
        Kestrel.kestrelGetService(analysis, index, ref service);
        string label = Marshal.PtrToStringUTF8(service.label);
        var tracks = service.slots.Take(service.trackCount).Select(slot => slot.trackNumber);
        return TypeName(service.streamType) + " on " + string.Join(" ", tracks.Distinct())
            + (label == "" ? "" : " (" + label + ")");
    }
}
