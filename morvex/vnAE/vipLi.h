// vipLi: the composition library, the one place where the sheet touches the host's project.
// The widgets and the panel speak of columns, frames and drawings; this class turns them into host
// handles and host times. It knows no widget.
//
// Units      frame   from 0 at the start of the composition; host time is frame / Fps seconds
//            image   a drawing's number; 0 is the blank drawing; a key holds image / Fps seconds
//            column  host layer index, 0 at the top of the stack
// Errors     An operation answers false, 0, -1 or an empty text and then leaves its out arguments
//            alone, unless it says otherwise. A failed host call leaves "-ERR I- line %d, file(%s)"
//            in the memory log. A suite that cannot be had is thrown as 516 and is caught where the
//            host called in. No current composition or layer is no error and is not logged.
// Rounding   It is not uniform, and that stays: sampling a cell and TimeToFrame add 0.5, reading a
//            key's image and a layer's in and out points do not.
// Tags       [host] reaches the host; [layer] works on Layer, which the caller has made current;
//            [undo] changes the project, inside the caller's undo group.
// Thread     The host's main thread, one call at a time.
#pragma once

#include "vnAE/CellFiles.h"

#include "hostapi/BasicSuite.h"
#include "hostapi/HostTypes.h"

#include <QByteArray>
#include <QString>

class QBrush;
class SuiteHandler;

class vipLi
{
public:
    static constexpr qint32 kMaxColumns = 30000;
    static constexpr qint32 kKeyMarkFrames = 1500;
    static constexpr qint32 kNoEffect = -1; // an effect key that was not found
    static constexpr qint32 kPathBytes = 260; // a path of the project as UTF-8, terminator included
    static constexpr qint32 kNameBytes = 32; // the host's name buffers, terminator included

    // Undo groups and commands.

    /// Opens one step of the host's history. @param name goes to the host as Latin-1 [host]
    void StartUndoGroup(const QString &name);
    void EndUndoGroup();
    /// Runs a command of the host's menus by its number. [host]
    void DoCommand(qint32 command);

    // The current composition.

    /// The composition of the host's active item, null when that is none. [host]
    AEGP_CompH GetActiveCompo();
    /// [host]
    bool HasActiveItem();
    /// Finds the composition called CompoName, bytes compared, the first in the project's walk.
    /// Sets Project and Compo; Compo keeps what it held when no composition has the name. [host]
    bool FindCompo();
    /// CompoName is set, and Compo is or can be found. [host]
    bool HasCompo();
    /// The item's name, at most 31 bytes of UTF-8; empty for null. [host]
    QByteArray GetCompoName(AEGP_CompH compo);
    /// Whether GetCompoName is CompoName, without a copy of the name: the panel asks for it at every
    /// idle call. [host]
    bool IsNamedAsCompo(AEGP_CompH compo);
    /// In frames, 0 for null. [host]
    qint32 GetCompoDuration(AEGP_CompH compo);
    qint32 GetCurrentCompoDuration();
    /// 0 when there is no Compo. [host]
    qint32 GetCurrentFrame();
    /// Moves the composition's current time, unless it stands there in exactly these numbers.
    /// [host]
    void SetCurrentFrame(qint32 frame);
    /// value / scale * Fps, half up for positive times, cut toward zero otherwise.
    qint32 TimeToFrame(const A_Time &time) const;

    // Columns.

    /// Layers of Compo, at most kMaxColumns. [host]
    qint32 GetColumnCount();
    /// The host's index of the active layer, 0 when there is none. [host]
    qint32 GetActiveColumnIndex();
    qint32 GetLayerIndex(AEGP_LayerH layer);
    /// The bound is the layer count of Compo; callers pass Compo. Null out of it. [host]
    AEGP_LayerH GetLayerAt(AEGP_CompH compo, qint32 index);
    /// Makes a column's layer Layer, with no change in the host. A column that does not exist
    /// leaves Layer null. [host]
    bool SetCurrentColumn(qint32 column);
    /// The same, and selects the layer in the host unless it is the active one: a selection of
    /// several layers that the user made stays. A negative column is true and changes nothing, one
    /// that does not exist is false and leaves Layer alone. [host]
    bool SelectColumn(qint32 column);
    /// The name that the user gave, else the source's name up to its first "." or "["; "ERR" when
    /// the host failed. [host] [layer]
    QString GetColumnName();
    /// kSequence or kFixe, told from the source alone: a still, a solid, a composition and a camera
    /// are FIXE. [host] [layer]
    qint32 GetColumnKind();
    /// The last image of the source: 0 for a source that is no footage, -1 without one. [host]
    /// [layer]
    qint32 GetSourceLastFrame();
    /// The source's file, ASCII only: other characters are left out. [host] [layer]
    QString GetSourcePath();
    /// The label of Layer's source; the argument has no effect, so a caller who wants a column's
    /// colour makes it current first. [host] [layer]
    qint32 GetLayerLabel(AEGP_LayerH notUsed);
    /// Fills the brush with the label's colour, solid. @return the brush [host] [layer]
    QBrush &GetLabelBrush(QBrush &brush, AEGP_LayerH notUsed);

    // Cells as keys of the time-remap stream.

    /// The image that Layer shows at a frame: sampled and rounded; no key is looked at.
    /// [host] [layer]
    bool GetCellImage(qint32 frame, qint32 &image);
    /// Makes Layer show an image from a frame up to the next key, with the fewest keys: equal
    /// neighbours are joined. Keys that other hands made linear stay linear.
    /// @return false when the stream's value cannot be read first; a failure after that is not told
    /// [host] [layer] [undo]
    bool SetCellImage(qint32 frame, qint32 image);
    /// The whole stream becomes one key at frame 0. [host] [layer] [undo]
    void ClearCells(qint32 image);
    /// The image that a key holds, cut toward zero: 28 for a key of image 29. [host]
    bool GetKeyImage(AEGP_StreamRefH stream, qint32 keyIndex, qint32 &image);
    /// The keys around a frame by index, -1 where there is none. True also for a stream without
    /// keys. [host]
    bool FindKeys(AEGP_StreamRefH stream, qint32 frame, qint32 &at, qint32 &before, qint32 &after);

    // Keys of any layer stream.

    /// A key at the frame, with the value that the stream shows there. [host] [layer] [undo]
    bool AddKey(qint32 streamNumber, qint32 frame);
    /// Removes the key at the frame, if any. [host] [layer] [undo]
    bool DeleteKey(qint32 streamNumber, qint32 frame);
    /// [host] [layer]
    bool HasKey(qint32 streamNumber, qint32 frame);
    /// Sets a bit in KeyMarks at each key of the stream that lies in the table. [host] [layer]
    bool MarkStreamKeys(qint32 streamNumber, quint8 mark);
    /// Builds KeyMarks anew for Layer: 1 position, 2 scale, 4 rotation. @return true [host] [layer]
    bool UpdateKeyMarks();
    /// The frame's entry of KeyMarks, 0 outside the table.
    quint8 GetKeyMarks(qint32 frame) const;

    // Transform and effect values, in whole numbers: read cut toward zero.

    /// Writes one component, 0 to 3, the others stay. With keys on the stream the frame's key takes
    /// the value, a new one where there is none; without keys the value holds for all frames.
    /// @return false also when Project is not set [host] [layer] [undo]
    bool SetStreamValue(qint32 streamNumber, qint32 frame, qint32 value, qint32 component);
    /// Both outputs are -1 when it answers false. [host] [layer]
    bool GetStreamValue(qint32 streamNumber, qint32 frame, qint32 &first, qint32 &second);
    /// Fills the five effect keys from the effects that the host has installed, by their names;
    /// one that is not found stays as it is. Notes four of them in the memory log. [host]
    bool FindEfxKeys();
    /// The first effect of this kind on Layer. The caller disposes of it. After a host error it is
    /// null.
    /// @param apply puts it on the layer when it is missing
    /// @return true with null when it is missing and was not to be applied [host] [layer] [undo]
    bool GetLayerEffect(qint32 installedKey, bool apply, AEGP_EffectRefH &effect);
    /// After a host error the value is 0 or what was read, and what was opened stays open.
    /// @param param the parameter's place among the effect's own, from 0
    /// @return true with 0 when the layer has no such effect [host] [layer]
    bool GetEfxValue(qint32 installedKey, qint32 frame, qint32 param, qint32 &value);
    /// The value holds for all frames, no key is made. A value that is not 0 applies the effect
    /// first where it is missing. After a host error what was opened stays open. [host] [layer]
    /// [undo]
    bool SetEfxValue(qint32 installedKey, qint32 frame, qint32 param, qint32 value);

    // Drawings on disk as footage.

    /// One footage item for a file or its series: the one that the project has, else a new one in
    /// the root folder. For a series the blank image number zero is written beside it first, when
    /// it has none. ImportMessage takes the last word. A movie, swf or mov, comes in as one file.
    /// @param kind kSequence or kFixe @param path UTF-8, for a series of any of its files or its
    /// root alone @param item null unless a footage was found or added; a failure behind the adding
    /// leaves it in the project and here @param makeZero write the blank image [host] [undo]
    bool ImportCells(qint32 kind, const QByteArray &path, AEGP_ItemH &item, bool makeZero);

    // Columns made, moved and timed.

    /// Imports the series that the file belongs to and adds its layer at the sheet's right end,
    /// blank over the whole composition. @param path UTF-8, of any file of the series or its root
    /// [host] [undo]
    bool AddSequenceColumn(const QByteArray &path);
    /// Imports one file and adds its layer at the sheet's right end. [host] [undo]
    bool AddFixeColumn(const QByteArray &path);
    /// Moves a layer in its composition; at the stack's end it answers false. Behind a move of more
    /// than one place the host may find no such index: false, too, or the bottom for index -1.
    /// @param places down the stack when positive [host] [undo]
    bool MoveLayer(AEGP_LayerH layer, qint32 places);
    /// The first and the last frame on which Layer exists, both inclusive; cut, not rounded.
    /// [host] [layer]
    bool GetLayerInOut(qint32 &first, qint32 &last);
    /// Layer time and composition time then agree: the layer's offset becomes 0.
    /// @param last inclusive; first - 1 makes a layer of no frames [host] [layer] [undo]
    bool SetLayerInOut(qint32 first, qint32 last);
    /// Nothing reports a failure. [host] [undo]
    void SetCompoDuration(qint32 frames);
    /// Aligns each footage layer: left edges on the composition's left, bottoms on its bottom.
    /// After a host error Layer stays at the layer that it had come to. [host] [undo]
    bool CenterFootageLayers();
    /// Takes the sheet from a file of another program's. No such file can be read yet.
    /// @param filter the names that are offered where the path is empty @return false
    bool LoadExpo(const QByteArray &path, const char *filter);

    // The plug-in object sets these two at load.
    const SPBasicSuite *BasicSuite = nullptr;
    A_long PluginId = 0;

    qint32 Fps = 25; // frames a second of the sheet; the composition's own rate is never read
    bool ReverseColumns = false; // column 0 is the bottom layer; nothing sets it
    AEGP_ProjectH Project = nullptr;
    AEGP_CompH Compo = nullptr; // the current composition
    AEGP_LayerH Layer = nullptr; // the current column
    char CompoName[kNameBytes] = {}; // handles go stale between two calls, the name does not
    // Installed keys of the effects that the panel knows; FindEfxKeys sets those that the host has.
    qint32 EfxKeyBlur = kNoEffect;
    qint32 EfxKeyFiltre = kNoEffect;
    qint32 EfxKeyFill = 0;
    qint32 EfxKeyOutline = 0;
    qint32 EfxKeyTessaly = 0;
    quint8 KeyMarks[kKeyMarkFrames] = {}; // of the column that it was last built for

private:
    /// In a buffer that the next name takes.
    const char *ReadCompoName(AEGP_CompH compo);
    /// A whole number out of a double, cut toward zero, kept inside 32 bits.
    static qint32 ToWhole(double value);
    A_Time FrameTime(qint32 frame) const;
    /// ReverseColumns turns the order around.
    qint32 HostIndex(qint32 column);
    /// The layer of a host index below the count, null for any other.
    /// @return false, with its log line, when the host failed
    bool ReadLayerAt(qint32 index, AEGP_LayerH &layer);
    bool SelectInHost(AEGP_LayerH layer);
    /// Layer's source item, null for a layer without one.
    bool ReadSource(AEGP_ItemH &source);
    /// The path of a footage's first file as UTF-8, of any length.
    bool ReadFootagePath(SuiteHandler &suites, AEGP_FootageH footage, QByteArray &path);
    /// @param same takes whether the item's footage is what an import asks for
    /// @return false, with its log line, when the host failed; so also the two below
    bool IsSameFootage(
        SuiteHandler &suites, AEGP_ItemH item, const QByteArray &path, qint32 kind, bool &same);
    /// The first footage in the project's walk that is what an import asks for; the item stays as
    /// it is when there is none.
    bool FindFootage(SuiteHandler &suites, AEGP_ProjectH project, const QByteArray &path,
        qint32 kind, AEGP_ItemH &item);
    /// Imports a file, or with `isSeries` all that belong to it, into a folder of the project.
    bool NewFootageItem(SuiteHandler &suites, const QByteArray &file, bool isSeries,
        AEGP_ItemH folder, AEGP_ItemH &item);

    /// Opens a stream of Layer for one use, which answers for the whole. @return false, with its log
    /// line, when the stream cannot be had
    template <class Use>
    bool WithStream(qint32 streamNumber, Use use);

    struct EfxParam
    {
        qint32 installedKey;
        qint32 frame;
        qint32 index;
    };
    /// Opens a parameter's value at a frame, hands it to `use`, and gives all back, each checked.
    /// After a host error what was opened so far stays open.
    template <class Use>
    bool UseEfxValue(const EfxParam &param, bool apply, Use use);
    bool ReadLayerStream(
        SuiteHandler &suites, qint32 streamNumber, const A_Time &time, AEGP_StreamVal &value);

    bool AddColumn(qint32 kind, const QByteArray &path, qint32 frames);
    bool AlignLayer(AEGP_LayerH layer, qint32 width, qint32 height);

    bool ReadRemapSeconds(SuiteHandler &suites, qint32 frame, double &seconds);
    /// Both readings of the seconds must give the image: 28.99... is neither 28 nor 29.
    bool IsImage(double seconds, qint32 image) const;
    bool KeyIsImage(SuiteHandler &suites, AEGP_StreamRefH stream, qint32 keyIndex, qint32 image);
    void FindKeys(SuiteHandler &suites, AEGP_StreamRefH stream, qint32 frame, qint32 &at,
        qint32 &before, qint32 &after);
    void WriteHoldKey(SuiteHandler &suites, AEGP_StreamRefH stream, qint32 keyIndex, qint32 image);
};

/// The last word of ImportCells, for whoever wants to show it.
extern ImportText ImportMessage;

/// The library, made at first use and kept until the process ends. Making it calls no host.
vipLi *GetVipLi();

/// Text for display from the host's bytes: UTF-8 where that is valid, else Latin-1.
QString DisplayText(const char *bytes);
