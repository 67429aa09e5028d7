// The program's rules live in logic that never sees a widget; screens only wire them up.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Architecture, LogicIncludesNoWidgets)
{
    const QString src = QStringLiteral(TARVEX_SOURCE_DIR "/src");
    const QRegularExpression widgetInclude(
        u"#include\\s*[<\"](QtWidgets|QWidget|QDialog|QMessageBox|QApplication|QMainWindow|QLineEdit|QComboBox|"
        u"QTreeWidget|QFileDialog|QPushButton|QLabel|QStatusBar)"_s);
    QStringList offenders;
    for (QDirIterator it(src, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString path = it.next();
        const QString relative = path.mid(src.size() + 1);
        if (relative.startsWith(u"app/"_s) || relative.startsWith(u"ui/"_s) || relative.contains(u"/screens/"_s))
            continue;
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        if (widgetInclude.match(QString::fromUtf8(f.readAll())).hasMatch())
            offenders << relative;
    }
    EXPECT_TRUE(offenders.isEmpty()) << offenders.join(u", "_s).toStdString();
}
