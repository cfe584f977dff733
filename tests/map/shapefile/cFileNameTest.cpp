#include "map/shapefile/cFileName.h"

#include "map/shapefile/ShapefileError.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

cFileName Named(const char* spec) {
    cFileName name;
    name.SetFileSpec(QString::fromLatin1(spec));
    return name;
}

} // namespace

TEST(FileNameTest, PartsOfAName) {
    const struct {
        const char* spec;
        const char* base;
        const char* extension;
    } cases[] = {
        {"", "", ""},
        {"C:\\Maps\\World.shp", "World", "shp"},
        {"/home/a.b/Maps/World.shp", "World", "shp"},
        {"C:\\Maps\\World.2.shp", "World.2", "shp"},
        {"World.shp", "World", "shp"},
        {"C:\\Maps\\World", "World", "C:\\Maps\\World"},
        {"C:\\Maps.old\\World", "World", "old\\World"},
        {"C:\\Maps\\.shp", "", "shp"},
        {"C:\\Maps\\", "", "C:\\Maps\\"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Named(c.spec).GetBaseName().toStdString(), c.base) << c.spec;
        EXPECT_EQ(Named(c.spec).GetExtension().toStdString(), c.extension) << c.spec;
    }
}

TEST(FileNameTest, SetBaseNameTakesFileNamesOnly) {
    for (const char* name : {"", "a?b", "a\"b", "a*b", "a|b", "a/b", "a>b", "a<b", "a:b", "a\\b"}) {
        cFileName file = Named("C:\\Maps\\World.shp");
        try {
            file.SetBaseName(QString::fromLatin1(name));
            FAIL() << name;
        } catch (const ShapefileError& error) {
            EXPECT_EQ(error.number, 0x80040203U);
            EXPECT_EQ(error.text.toStdString(), "The FileSpec is invalid");
            EXPECT_EQ(error.source.toStdString(), "C_FileName::SetBaseName");
        }
        EXPECT_EQ(file.GetFileSpec().toStdString(), "C:\\Maps\\World.shp") << name;
    }
    const struct {
        const char* spec;
        const char* result;
    } cases[] = {{"C:\\Maps\\World.shp", "C:\\Maps\\Buffer_1.shp"},
                 {"World.shp", "Buffer_1.shp"},
                 {"C:\\Maps\\", "C:\\Maps\\Buffer_1"},
                 {"C:\\Maps.old\\World", "C:\\Maps.old\\Buffer_1"}};
    for (const auto& c : cases) {
        cFileName file = Named(c.spec);
        file.SetBaseName(QStringLiteral("Buffer_1"));
        EXPECT_EQ(file.GetFileSpec().toStdString(), c.result) << c.spec;
    }
}

TEST(FileNameTest, SetExtensionTakesAnything) {
    const struct {
        const char* spec;
        const char* extension;
        const char* result;
    } cases[] = {{"C:\\Maps\\World.shp", "shx", "C:\\Maps\\World.shx"},
                 {"C:\\Maps\\World.shp", "a:\\*?", "C:\\Maps\\World.a:\\*?"},
                 {"C:\\Maps\\World.shp", "", "C:\\Maps\\World."},
                 {"World", "shp", "shp"},
                 {"", "shp", "shp"}};
    for (const auto& c : cases) {
        cFileName file = Named(c.spec);
        file.SetExtension(QString::fromLatin1(c.extension));
        EXPECT_EQ(file.GetFileSpec().toStdString(), c.result) << c.spec;
    }
}

} // namespace tessaro
