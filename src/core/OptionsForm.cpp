#include "OptionsForm.h"

#include "core/NumericValue.h"
#include "core/Options.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// The value of a status whose animals show no age.
const QString kNoAge = u"Don't Show Age"_s;

// Tabs faults are shown on.
constexpr int kImageTab = 7;
constexpr int kAwardsTab = 10;

/// A whole number typed in a box: what a number box holds, never text.
QString digitsOnly(const QString &typed)
{
    const QString t = typed.trimmed();
    bool ok = false;
    const int n = t.toInt(&ok);
    return ok ? QString::number(n) : QString();
}

} // namespace

QStringList optionsTabs()
{
    return {u"Breed Specifics"_s,        u"Pedigree Sheet"_s, u"Backup Details"_s, u"Identification Methods"_s,
            u"Affix"_s,                  u"General"_s,        u"Deduplification Method"_s, u"Image Information"_s,
            u"Genetics Database"_s,      u"Word Merge"_s,     u"Awards System"_s,  u"Age Display"_s,
            u"Pedigree Header/Footer"_s, u"Inbreeding"_s};
}

OptionsForm readOptionsForm(const Session &session, const QStringList &breeds, const QStringList &statuses)
{
    const Options o(session);
    OptionsForm f;
    // What the screen shows where nothing is stored yet.
    f.autoBackup = Options::isOn(o.textOr(Opt::AutoBackup, u"1"_s));
    f.backupEvery = std::clamp(o.number(Opt::BackUpEvery) - 1, 0, 4);
    f.keepBackups = o.number(Opt::KeepBackUps);
    f.promptBackup = o.flag(Opt::PromptBackup);
    f.remindBackup = Options::isOn(o.textOr(Opt::RemindBackup, u"1"_s));
    f.remindEvery = o.textOr(Opt::RemindEvery, u"10"_s).toInt();
    f.autoFloppyBackup = o.flag(Opt::AutoFloppyBackup);
    f.backupDrive = o.text(Opt::BackupDrive);
    f.wordDetected = o.text(Opt::WordDetected) == u"1";

    const int points = o.number(Opt::PointsSystem);
    if (points == 99) {
        // Never set: rabbit breeders count stars; the choice is stored at OK.
        const bool rabbits = session.StockType.compare(u"Rabbits"_s, Qt::CaseInsensitive) == 0;
        f.points = rabbits;
        f.pointsName = rabbits ? u"Stars"_s : QString();
        // Five stars an award, as the awards count them until the breeder says otherwise.
        if (rabbits && !o.has(Opt::MaxPoints))
            f.maxPoints = u"5"_s;
        f.change(OptionsForm::Group::Points);
    } else {
        f.points = points == 1;
        f.pointsName = o.text(Opt::PointsName);
    }
    if (f.maxPoints.isEmpty())
        f.maxPoints = o.text(Opt::MaxPoints);

    f.logo = o.text(Opt::Logo);
    f.watermark = o.text(Opt::Watermark);
    f.watermarkStretch = o.flag(Opt::WatermarkStretch);
    f.pedigreeStyle = o.number(Opt::DefaultPedigreeType);
    f.generations = std::clamp(o.number(Opt::DefaultGenerations), 3, 5);
    f.inbreedingGenerations = o.number(Opt::InbreedingGenerations);
    if (f.inbreedingGenerations < 0 || f.inbreedingGenerations > 30)
        f.inbreedingGenerations = 0;
    f.pedigreeFont = o.text(Opt::PedigreeFont);
    for (int i = 0; i < 4; ++i)
        f.header[std::size_t(i)] = o.text(Opt::Header, QString::number(i));
    f.footer = o.text(Opt::Footer);

    f.pedigreeTerminology = o.flag(Opt::PedigreeTerminology) ? 1 : 0;
    f.colourSpelling = o.flag(Opt::ColourSpelling) ? 1 : 0;
    const int gestation = o.number(Opt::GestationInDays);
    f.gestation = gestation > 0 ? QString::number(gestation) : QString();
    f.weightUnit = o.text(Opt::WeightUnit);

    f.genetics = o.number(Opt::Genetics) == 1;
    f.geneticsFile = o.text(Opt::GeneticsFile);
    for (const QString &file : QDir(session.DataFolder).entryList({u"*Colours.Gen"_s}, QDir::Files, QDir::Name)) {
        const qsizetype cut = file.indexOf(u" Colours"_s, 0, Qt::CaseInsensitive);
        if (cut > 0)
            f.geneticsFiles << file.left(cut);
    }
    f.geneticsAdvanced = !o.has(Opt::GeneticsAdv) || o.flag(Opt::GeneticsAdv);
    f.matchColour = o.flag(Opt::MatchColour) ? 1 : 0;
    for (const auto &[colour, match] : o.all(OptionSection::GeneticsMap))
        f.colourMatches.append({colour, true});

    f.prefix = o.text(Opt::Prefix);
    f.suffix = o.text(Opt::Suffix);
    f.ids = {o.text(Opt::Id), o.text(Opt::Id2), o.text(Opt::Id3)};
    f.autoPrefix = o.text(Opt::AutoPrefix);
    for (int i = 0; i < 3; ++i)
        f.dedupe[std::size_t(i)] = o.flag(Opt::DedupeOption, QString::number(i));
    f.imageFolder = f.storedImageFolder = o.text(Opt::DefaultImageFolder);

    for (const QString &name : breeds) {
        OptionsForm::Breed b;
        b.name = name;
        b.gestation = QString::number(o.number(Opt::BreedGestation, name));
        b.watermark = o.text(Opt::BreedWatermark, name);
        b.stretch = o.flag(Opt::BreedStretch, name);
        f.breeds << b;
    }
    for (const QString &status : statuses)
        f.ages.append({status, o.entry(OptionSection::StudOptions, status) == kNoAge});
    return f;
}

std::optional<OptionsFault> validateOptionsForm(OptionsForm &f)
{
    using Group = OptionsForm::Group;
    if (f.changed.count(Group::Points) && f.points) {
        if (f.pointsName.trimmed().isEmpty())
            return OptionsFault{u"Points System Name must be Entered"_s, kAwardsTab, u"TxtPoints"_s};
        if (numericValue(f.maxPoints) < 1)
            return OptionsFault{u"A maximum number of Points must be Entered"_s, kAwardsTab, u"MskMaxPoints"_s};
    }
    // The terms close up from the right; a copied term stays in its own box too.
    for (QString &id : f.ids)
        id = id.trimmed();
    if (f.ids[0].isEmpty()) {
        f.ids[0] = f.ids[1];
        f.ids[1] = f.ids[2];
    }
    if (f.ids[1].isEmpty())
        f.ids[1] = f.ids[2];
    if (f.ids[0].isEmpty())
        f.ids[0] = u"Identification"_s;
    // Only a folder the breeder changed is looked at: one removed since does not block OK.
    if (f.imageFolder != f.storedImageFolder && !f.imageFolder.isEmpty()) {
        const QFileInfo folder(f.imageFolder);
        if (!folder.exists())
            return OptionsFault{u"The Image Folder entered does not exist"_s, kImageTab, u"TxtDefImgFolder"_s};
        if (!folder.isDir())
            return OptionsFault{u"The Image Folder entered is not a folder"_s, kImageTab, u"TxtDefImgFolder"_s};
    }
    return std::nullopt;
}

void writeOptionsForm(Session &session, const OptionsForm &f)
{
    using Group = OptionsForm::Group;
    Options o(session);
    const auto changed = [&](Group g) { return f.changed.count(g) > 0; };
    const auto setNumberText = [&](const OptionKey &key, const QString &typed) {
        const QString digits = digitsOnly(typed);
        if (digits.isEmpty())
            o.remove(key);
        else
            o.setNumber(key, digits.toLongLong());
    };
    if (changed(Group::Backup)) {
        o.setFlag(Opt::AutoBackup, f.autoBackup);
        o.setNumber(Opt::BackUpEvery, f.backupEvery + 1);
        o.setNumber(Opt::KeepBackUps, f.keepBackups);
        o.setFlag(Opt::PromptBackup, f.promptBackup);
        o.setFlag(Opt::RemindBackup, f.remindBackup);
        o.setNumber(Opt::RemindEvery, f.remindEvery);
        o.setFlag(Opt::AutoFloppyBackup, f.autoFloppyBackup);
        o.set(Opt::BackupDrive, f.backupDrive.trimmed());
    }
    if (changed(Group::Points)) {
        o.setNumber(Opt::PointsSystem, f.points ? 1 : 0);
        o.set(Opt::PointsName, f.pointsName.trimmed());
        setNumberText(Opt::MaxPoints, f.maxPoints);
    }
    if (changed(Group::PedigreeSheet)) {
        o.set(Opt::Logo, f.logo.trimmed());
        o.set(Opt::Watermark, f.watermark.trimmed());
        o.setFlag(Opt::WatermarkStretch, f.watermarkStretch);
        o.setNumber(Opt::DefaultPedigreeType, f.pedigreeStyle);
        o.setNumber(Opt::DefaultGenerations, f.generations);
        o.set(Opt::PedigreeFont, f.pedigreeFont);
    }
    if (changed(Group::Inbreeding))
        o.setNumber(Opt::InbreedingGenerations, f.inbreedingGenerations);
    if (changed(Group::HeaderFooter)) {
        for (int i = 0; i < 4; ++i)
            o.set(Opt::Header, f.header[std::size_t(i)], QString::number(i));
        o.set(Opt::Footer, f.footer);
    }
    if (changed(Group::Terminology)) {
        o.setFlag(Opt::PedigreeTerminology, f.pedigreeTerminology == 1);
        o.setFlag(Opt::ColourSpelling, f.colourSpelling == 1);
    }
    if (changed(Group::General)) {
        setNumberText(Opt::GestationInDays, f.gestation);
        o.set(Opt::WeightUnit, f.weightUnit.trimmed());
    }
    if (changed(Group::Genetics)) {
        o.setNumber(Opt::Genetics, f.genetics ? 1 : 0);
        // Off, the file is forgotten: switching genetics on again needs a choice.
        o.set(Opt::GeneticsFile, f.genetics ? f.geneticsFile : QString());
        o.setFlag(Opt::GeneticsAdv, f.geneticsAdvanced);
        o.setFlag(Opt::MatchColour, f.matchColour == 1);
        for (const auto &[colour, keep] : f.colourMatches)
            if (!keep)
                o.removeEntry(OptionSection::GeneticsMap, colour);
    }
    if (changed(Group::Affix)) {
        o.set(Opt::Prefix, f.prefix);
        o.set(Opt::Suffix, f.suffix);
    }
    if (changed(Group::Identification)) {
        o.set(Opt::Id, f.ids[0]);
        o.set(Opt::Id2, f.ids[1]);
        o.set(Opt::Id3, f.ids[2]);
        o.set(Opt::AutoPrefix, f.autoPrefix.trimmed());
    }
    if (changed(Group::Dedupe))
        for (int i = 0; i < 3; ++i)
            o.setFlag(Opt::DedupeOption, f.dedupe[std::size_t(i)], QString::number(i));
    if (changed(Group::ImageFolder))
        o.set(Opt::DefaultImageFolder, f.imageFolder.trimmed());

    // The breeds and the ages are written whatever changed.
    for (const OptionsForm::Breed &b : f.breeds) {
        const QString days = digitsOnly(b.gestation);
        o.setNumber(Opt::BreedGestation, days.isEmpty() ? 0 : days.toLongLong(), b.name);
        o.set(Opt::BreedWatermark, b.watermark.trimmed(), b.name);
        o.setFlag(Opt::BreedStretch, b.stretch, b.name);
    }
    for (const auto &[status, noAge] : f.ages) {
        if (noAge)
            o.setEntry(OptionSection::StudOptions, status, kNoAge);
        else
            o.removeEntry(OptionSection::StudOptions, status);
    }
    if (f.searchWordAgain)
        o.set(Opt::WordDetected, QString());
}

} // namespace tarvex
