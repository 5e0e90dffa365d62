// Doc: the panel's model of where the user is, the current frame and the current column, and of
// what stands there. It is a structure, so that the dashboard makes its tabs and editors from the
// declarations in the constructor.
//
// It holds nothing that survives: but for the options of "Setup" and the fields of "NewCol" every
// value is copied in from the host (DocMirror.h) and written back when the user edits it. In
// between it shows what it last read.
//
// A field's address is its identity: the panel tells by it which editor or which button spoke.
#pragma once

#include "T_Types/T_Struct.h"
#include "hostapi/HostTypes.h"

class Doc : public T_Struct
{
public:
    Doc();

    bool IsA(const std::type_info &kind) const override;

    /// -1 while no frame is current.
    qint32 GetRow() const { return row; }
    void SetRow(qint32 frame) { row = frame; }
    /// -1 while no column is current.
    qint32 GetCol() const { return col; }
    /// Also makes the column's layer the library's current one, with nothing selected in the host;
    /// a column that does not exist leaves the library without a layer. [host]
    void SetCol(qint32 column);
    /// The layer of the current column in the current composition, null when there is none. [host]
    AEGP_LayerH GetCurrentLayer() const;
    /// Makes a layer the library's current one, and its column the current column. [host]
    void SetCurrentLayer(AEGP_LayerH layer);

    qint32 extIndex = 0; // into extList: the file extension of a new column
    QStringList extList;
    qint32 typeIndex = 0; // into typeList: the kind of a new column
    QStringList typeList;
    qint32 row = 0; // current frame
    qint32 col = 0; // current column
    qint32 colWidth = 48; // pixels; width of a column of the sheet
    QString name; // of a new column, or its whole path
    qint32 posX = 0, posY = 0;
    qint32 scale = 0; // percent; the first component stands for both
    qint32 rotation = 0; // degrees
    bool keyPos = false; // the position has a key at the current frame
    bool keyPosBis = false; // written together with keyPos; has no editor
    bool keyScale = false;
    bool keyRotation = false;
    qint32 opacity = 0; // percent
    qint32 blur = 0;
    qint32 lightness = 0, saturation = 0, hue = 0;
    bool syncIma = false; // the frame follows the host, and the host the frame
    bool syncColumn = false; // likewise the column

    // Buttons: what they hold means nothing, what they are is their address. Those without an
    // editor have their commands waiting for one.
    bool btRefresh = false; // no editor
    bool btShowA = false, btShowB = false; // no editor
    bool btMoveLeft = false, btMoveRight = false;
    bool btRefreshBis = false; // no editor
    bool btLoadExpo = false; // no editor
    bool btCenter = false; // no editor
    bool btNewCol = false;
    bool btProjectFolder = false; // no editor
    bool sheetFlag = false;

private:
    void AddTabMark(const QString &text);
    void AddNumber(qint32 *field, const QString &label);
    void AddFlag(bool *field, const QString &label);
    void DeclareTransform();
};

/// The one document, made at first use and never deleted.
Doc *GetDoc();
