#include "CompositionDialog.h"

#include "render/DrawingCache.h"
#include "render/Placement.h"
#include "window/ColorButton.h"
#include "window/ItemText.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSpinBox>

#include <numeric>

namespace rostrum {
namespace {

constexpr int kMostFrames = 999999;

struct Preset
{
    const char *name;
    QSize size;
};

const QVector<Preset> &Presets()
{
    static const QVector<Preset> presets{ { "Custom", {} }, { "HD 1080", { 1920, 1080 } },
        { "HD 720", { 1280, 720 } }, { "UHD 4K", { 3840, 2160 } }, { "2K", { 2048, 1556 } },
        { "PAL", { 720, 576 } } };
    return presets;
}

QSpinBox *NumberBox(const char *name, int low, int high, int value)
{
    auto *box = new QSpinBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(low, high);
    box->setValue(value);
    return box;
}

Rate Reduced(qint64 num, qint64 den)
{
    const qint64 divisor = std::gcd(num, den);
    return { static_cast<qint32>(num / divisor), static_cast<qint32>(den / divisor) };
}

} // namespace

std::optional<Rate> ReadRate(const QString &text)
{
    QString plain = text.trimmed();
    plain.replace(QLatin1Char(','), QLatin1Char('.'));
    static const QRegularExpression fraction(
        QStringLiteral("^([0-9]{1,9})(?:\\s*/\\s*([0-9]{1,9}))$"));
    static const QRegularExpression decimal(QStringLiteral("^[0-9]{1,4}(?:\\.[0-9]{0,3})?$"));
    Rate rate;
    if (const auto match = fraction.match(plain); match.hasMatch()) {
        const qint64 den = match.captured(2).toLongLong();
        if (den == 0)
            return std::nullopt;
        rate = Reduced(qMax<qint64>(match.captured(1).toLongLong(), 0), den);
    } else if (decimal.match(plain).hasMatch()) {
        const qint64 thousandths = qRound64(plain.toDouble() * 1000);
        for (const int whole : { 24, 30, 60 }) { // 23.976, 29.97, 59.94
            if (qAbs(thousandths - qRound64(whole * 1000000 / 1001.0)) == 0)
                return Rate{ whole * 1000, 1001 };
        }
        rate = Reduced(thousandths, 1000);
    } else {
        return std::nullopt;
    }
    if (rate.num <= 0 || rate.PerSecond() < 1 || rate.PerSecond() > 1000)
        return std::nullopt;
    return rate;
}

CompositionSettings SettingsOf(const Item &item)
{
    const Composition &composition = *item.AsComposition();
    return { item.name, composition.size, composition.rate, FrameCount(composition),
        composition.background };
}

void ApplySettings(const CompositionSettings &settings, Composition *composition)
{
    const Time before = composition->duration;
    const bool keepsLength
        = settings.rate == composition->rate && settings.frames == FrameCount(*composition);
    composition->size = settings.size;
    composition->rate = settings.rate;
    composition->background = settings.background;
    if (!keepsLength) // a last frame that is a part of one stays a part
        composition->duration = settings.rate.FrameTime(settings.frames);
    for (LayerPtr &layer : composition->layers) {
        const Layer &now = *layer.constData();
        if (now.inPoint == Time() && now.duration == before && before != composition->duration)
            layer->duration = composition->duration;
    }
}

CompositionDialog::CompositionDialog(
    const QString &title, const CompositionSettings &settings, QWidget *parent)
    : QDialog(parent)
    , name(new QLineEdit(QString::fromUtf8(settings.name)))
    , preset(new QComboBox)
    , width(NumberBox("width", 1, kLargestSide, settings.size.width()))
    , height(NumberBox("height", 1, kLargestSide, settings.size.height()))
    , rate(new QComboBox)
    , frames(NumberBox("frames", 1, kMostFrames, settings.frames))
    , background(new ColorButton(settings.background))
    , rateHint(new QLabel)
    , seconds(new QLabel)
{
    setWindowTitle(title);
    name->setObjectName(QStringLiteral("name"));
    preset->setObjectName(QStringLiteral("preset"));
    for (const Preset &each : Presets())
        preset->addItem(QLatin1String(each.name));
    rate->setObjectName(QStringLiteral("rate"));
    rate->setEditable(true);
    rate->addItems({ QStringLiteral("24"), QStringLiteral("25"), QStringLiteral("30"),
        QStringLiteral("23.976"), QStringLiteral("29.97"), QStringLiteral("12"),
        QStringLiteral("50"), QStringLiteral("60") });
    const std::optional<Rate> told = ReadRate(RateText(settings.rate));
    rate->setEditText(told && *told == settings.rate
            ? RateText(settings.rate)
            : QStringLiteral("%1/%2").arg(settings.rate.num).arg(settings.rate.den));
    background->setObjectName(QStringLiteral("background"));
    background->setToolTip(QStringLiteral("Background"));
    MakeFields();
    connect(preset, QOverload<int>::of(&QComboBox::activated), this, &CompositionDialog::OnPreset);
    connect(name, &QLineEdit::textChanged, this, &CompositionDialog::OnChanged);
    connect(rate, &QComboBox::editTextChanged, this, &CompositionDialog::OnChanged);
    for (QSpinBox *box : { width, height, frames })
        connect(
            box, QOverload<int>::of(&QSpinBox::valueChanged), this, &CompositionDialog::OnChanged);
    OnChanged();
    name->selectAll();
}

void CompositionDialog::MakeFields()
{
    rateHint->setObjectName(QStringLiteral("rateHint"));
    rateHint->setText(QStringLiteral("The exposure sheet always counts 25 frames a second:\n"
                                     "at another rate its rows lie between the frames."));
    rateHint->setForegroundRole(QPalette::BrightText);
    auto *size = new QHBoxLayout;
    size->addWidget(width);
    size->addWidget(new QLabel(QStringLiteral("x")));
    size->addWidget(height);
    size->addWidget(preset);
    auto *length = new QHBoxLayout;
    length->addWidget(frames);
    length->addWidget(seconds, 1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    ok = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("Name"), name);
    form->addRow(QStringLiteral("Size"), size);
    form->addRow(QStringLiteral("Frames a second"), rate);
    form->addRow(QString(), rateHint);
    form->addRow(QStringLiteral("Length in frames"), length);
    form->addRow(QStringLiteral("Background"), background);
    form->addRow(buttons);
}

void CompositionDialog::OnPreset(int index)
{
    const QSize size = Presets().value(index).size;
    if (size.isEmpty())
        return;
    width->setValue(size.width());
    height->setValue(size.height());
}

void CompositionDialog::OnChanged()
{
    int index = 0;
    for (int i = 1; i < Presets().size(); ++i) {
        if (Presets()[i].size == QSize(width->value(), height->value()))
            index = i;
    }
    preset->setCurrentIndex(index);
    const std::optional<Rate> read = ReadRate(rate->currentText());
    rateHint->setVisible(read && *read != Rate());
    const bool fits = IsSizeAllowed({ width->value(), height->value() });
    if (!read)
        seconds->setText(QStringLiteral("the rate is no number"));
    else if (!fits)
        seconds->setText(QStringLiteral("the size is too large"));
    else
        seconds->setText(QStringLiteral("= %1 seconds")
                             .arg(read->FrameTime(frames->value()).Seconds(), 0, 'f', 2));
    ok->setEnabled(read && fits && !name->text().trimmed().isEmpty());
}

CompositionSettings CompositionDialog::Settings() const
{
    return { name->text().trimmed().toUtf8(), { width->value(), height->value() },
        ReadRate(rate->currentText()).value_or(Rate()), frames->value(), background->GetColor() };
}

} // namespace rostrum
