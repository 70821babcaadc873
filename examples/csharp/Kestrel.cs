// The plain C interface of Kestrel for C#: every constant, record and function of kestrel.h under
// its own name. What each of them does stands there.
//
// The library is found as libkestrel-dll64.dll or libkestrel-dll64.so where the system looks for
// shared libraries. Texts that go in are passed as UTF-8; texts that come out are constants of the
// library or belong to an analysis, so they arrive as IntPtr and are copied by
// Marshal.PtrToStringUTF8(). Records have the layout of C: fields in order, each at a multiple of
// its size. `reserved` arrays stand as single fields, so that all records but KestrelService can be
// pinned and handed over as they are.
using System;
using System.Runtime.InteropServices;

[StructLayout(LayoutKind.Sequential)]
public struct KestrelStream
{
    public uint structSize;
    public int group;
    public IntPtr streamId;
    public IntPtr trackLabels;
    public int channelCount;
    public int formatKey1;
    public int formatKey2;
    public int formatKey3;
    public byte isPairCoded;
    public byte isPairShared;
    public byte reserved0, reserved1, reserved2, reserved3, reserved4, reserved5;
}

[StructLayout(LayoutKind.Sequential)]
public struct KestrelRequest
{
    public uint structSize;
    public int streamCount;
    public IntPtr layoutDescription;
    public IntPtr surroundChannelOrder;
    public IntPtr streams;
    public uint streamStride;
    public byte reportAll;
    public byte surroundCheck;
    public byte reserved0, reserved1;
}

[StructLayout(LayoutKind.Sequential)]
public struct KestrelTrack
{
    public long trackNumber;
    public int group;
    public int sourceGroup;
    public int indexInGroup;
    public int reserved;
}

[StructLayout(LayoutKind.Sequential)]
public struct KestrelService
{
    public uint structSize;
    public int trackCount;
    public int serviceIndex;
    public int streamType;
    public byte reported;
    public byte isEmca;
    public byte requested;
    public byte reserved0, reserved1, reserved2, reserved3, reserved4;
    public IntPtr label;
    [MarshalAs(UnmanagedType.ByValArray, SizeConst = Kestrel.KESTREL_SLOTS)]
    public KestrelTrack[] slots;
}

[StructLayout(LayoutKind.Sequential)]
public struct KestrelFinding
{
    public uint structSize;
    public int code;
    public int service;
    public int slot;
    public int stream;
    public int reserved;
    public long track;
    public long first;
    public long second;
    public long textOffset;
    public long textLength;
}

public static class Kestrel
{
    public const int KESTREL_ABI = 1; // of kestrel_version.h; kestrelAbiVersion() must be the same

    public const int KESTREL_OK = 0;
    public const int KESTREL_UNKNOWN_ID = 1;
    public const int KESTREL_UNKNOWN_NAME = 2;
    public const int KESTREL_BUFFER_TOO_SMALL = 3;
    public const int KESTREL_NULL_ARGUMENT = 4;
    public const int KESTREL_BAD_TEXT = 5;
    public const int KESTREL_BAD_COUNT = 6;
    public const int KESTREL_BAD_RECORD_SIZE = 7;
    public const int KESTREL_BAD_INDEX = 8;
    public const int KESTREL_OUT_OF_MEMORY = 9;

    public const int KESTREL_MONO = 0;
    public const int KESTREL_STEREO = 1;
    public const int KESTREL_51_MIX = 2;
    public const int KESTREL_71_MIX = 3;
    public const int KESTREL_DOLBY_E = 4;
    public const int KESTREL_EMCA = 5;
    public const int KESTREL_UNKNOWN = 6;

    public const int KESTREL_UNTOUCHED = 0;
    public const int KESTREL_EMPTIED = 1;
    public const int KESTREL_FILLED = 2;
    public const int KESTREL_SLOTS = 32;

    public const int KESTREL_NO_STREAMS = 1;
    public const int KESTREL_NO_ENTRY = 2;
    public const int KESTREL_PAIR_CODED_TRACK = 3;
    public const int KESTREL_PLAIN_TRACK = 4;
    public const int KESTREL_TOO_FEW_TRACKS = 5;
    public const int KESTREL_KEY1_DIFFERS = 6;
    public const int KESTREL_KEY2_DIFFERS = 7;
    public const int KESTREL_KEY3_DIFFERS = 8;
    public const int KESTREL_UNKNOWN_SERVICE = 101;
    public const int KESTREL_EMPTY_ELEMENT = 102;
    public const int KESTREL_TRACKS_LEFT_OVER = 103;
    public const int KESTREL_LABEL_MISSING = 104;
    public const int KESTREL_LABEL_UNKNOWN = 105;
    public const int KESTREL_LABEL_DOUBLED = 106;
    public const int KESTREL_LABELS_REORDERED = 107;
    public const int KESTREL_RUN_TOO_LONG = 108;
    public const int KESTREL_SERVICE_WITHOUT_TRACK = 109;

    private const string Library = "libkestrel-dll64";
    private const CallingConvention C = CallingConvention.Cdecl;

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr kestrelStatusText(int status);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr kestrelVersion();

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelAbiVersion();

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelCatalogueSize(out int rows, out int items, out int streamTypes);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelRowTracks(int row, out int tracks);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelRowItems(int row, [Out] int[] items, UIntPtr capacity,
        out UIntPtr needed);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelRowDefaultItem(int row, out int item);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemRow(int item, out int row);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemName(int item, out IntPtr name);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemFromName([MarshalAs(UnmanagedType.LPUTF8Str)] string name,
        out int item);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemStreamTypes(int item, [Out] int[] types, UIntPtr capacity,
        out UIntPtr needed);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemText(int item, [Out] byte[] text, UIntPtr capacity,
        out UIntPtr needed);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemFromText([MarshalAs(UnmanagedType.LPUTF8Str)] string text,
        out int item);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemStreamName(int item, int position, [Out] byte[] name,
        UIntPtr capacity, out UIntPtr needed);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelStreamTypeName(int type, out IntPtr name);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelStreamTypeTracks(int type, out int tracks);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelStreamTypeFromName(
        [MarshalAs(UnmanagedType.LPUTF8Str)] string name, out int type);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelItemFromLayoutCode(
        [MarshalAs(UnmanagedType.LPUTF8Str)] string code, out int item);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelLayoutCode(int index, out IntPtr code, out int item);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelAnalyse(ref KestrelRequest request, out IntPtr analysis,
        out UIntPtr badByte, out int badStream);

    [DllImport(Library, CallingConvention = C)]
    public static extern void kestrelFreeAnalysis(IntPtr analysis);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelOutcome(IntPtr analysis, out int outcome, out uint trackTotal);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelServiceCount(IntPtr analysis, out int count);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelGetService(IntPtr analysis, int index,
        ref KestrelService service);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelFindingCount(IntPtr analysis, out int count);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelGetFinding(IntPtr analysis, int index,
        ref KestrelFinding finding);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelFindingText(IntPtr analysis, int index, [Out] byte[] text,
        UIntPtr capacity, out UIntPtr needed);

    [DllImport(Library, CallingConvention = C)]
    public static extern int kestrelDescribedTotals(IntPtr analysis, [Out] int[] totals,
        UIntPtr capacity, out UIntPtr needed);
}
