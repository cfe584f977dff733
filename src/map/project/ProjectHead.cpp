#include "map/project/ProjectHead.h"

#include "platform/Paths.h"

#include <QLocale>

namespace tessaro {

namespace {

constexpr int kTextType = 4;
constexpr int kNumberType = 9;

class Head final {
  public:
    Head(ProjectObjects& objects, const ProjectRefs& refs, const ProjectFacts& facts)
        : objects_(objects), refs_(refs), facts_(facts), project_(objects.Announce()),
          tableDocument_(objects.Announce()) {
        const QString name = FileNameOf(facts.path);
        base_ = name.left(name.lastIndexOf(QLatin1Char('.')));
    }

    void Put() {
        PutRoot();
        PutProject();
        PutTableDocument();
        PutRows();
        PutView();
        PutDisplay();
    }

  private:
    [[nodiscard]] QString Created() const {
        return QLocale::c().toString(facts_.created, QStringLiteral("M/d/yyyy h:mm:ss AP"));
    }
    [[nodiscard]] QString Table() const { return base_ + QStringLiteral(".dbf"); }

    void PutRoot() {
        objects_.Begin("ODB");
        objects_.Put("FirstRootClassName: ", QStringLiteral("Project"));
        objects_.Put("Roots:  ", project_);
        objects_.Put("Version:    ", 30);
    }

    void PutProject() {
        const ObjectRef window = objects_.Announce();
        const ObjectRef colors = objects_.Announce();
        objects_.Begin(project_, "Project");
        objects_.Put("Name:   ", base_ + QStringLiteral(".apr"));
        objects_.Put("CreationDate:   ", Created());
        objects_.Put("GUIName:    ", QStringLiteral("Project"));
        objects_.Put("Win:    ", window);
        objects_.Put("CSMgr:  ", colors);
        objects_.Put("VisGUIWidth:    ", 70);
        objects_.Put("Doc:    ", tableDocument_);
        objects_.Put("Doc:    ", refs_.view);
        objects_.Put("Scripts:    ", refs_.names);
        objects_.Put("WorkDir:    ", refs_.workFolder);
        objects_.Put("WinX:   ", 5);
        objects_.Put("WinY:   ", 5);
        objects_.Put("WinW:   ", 640);
        objects_.Put("WinH:   ", 480);
        PutWindow(window, project_);
        objects_.Begin(colors, "CSMgr");
    }

    void PutWindow(ObjectRef window, ObjectRef owner) {
        objects_.Begin(window, "DocWin");
        objects_.Put("Owner:  ", owner);
    }

    void PutTableDocument() {
        const ObjectRef window = objects_.Announce();
        const ObjectRef colors = objects_.Announce();
        const ObjectRef contents = objects_.Announce();
        objects_.Begin(tableDocument_, "Table");
        objects_.Put("Name:   ", Table());
        objects_.Put("CreationDate:   ", Created());
        objects_.Put("GUIName:    ", QStringLiteral("Table"));
        objects_.Put("Win:    ", window);
        objects_.Put("CSMgr:  ", colors);
        objects_.Put("VTab:   ", contents);
        PutWindow(window, tableDocument_);
        objects_.Begin(colors, "CSMgr");
        selection_ = objects_.Announce();
        objects_.Begin(contents, "VTab");
        objects_.Put("Name:  ", Table());
        objects_.Put("BTab:  ", refs_.table);
        objects_.Put("SelBits:  ", selection_);
    }

    void PutRows() {
        const ObjectRef file = objects_.Announce();
        objects_.Begin(refs_.table, "dBase");
        objects_.Put("Name:  ", Table());
        for (const ObjectRef field : refs_.fields)
            objects_.Put("Fields:  ", field);
        objects_.Put("FileName:  ", file);
        for (std::size_t i = 0; i < kProjectFields.size(); ++i)
            PutField(objects_, refs_.fields[i], refs_.table, QLatin1String(kProjectFields[i].name),
                     kProjectFields[i].isNumber ? kNumberType : kTextType, kProjectFields[i].pixels);
        PutFileName(objects_, file, BesideProject(facts_.path, ".dbf"));
        PutSelection(objects_, selection_, facts_.records);
    }

    void PutView() {
        const ObjectRef window = objects_.Announce();
        const ObjectRef colors = objects_.Announce();
        const ObjectRef graphics = objects_.Announce();
        display_ = objects_.Announce();
        objects_.Begin(refs_.view, "View");
        objects_.Put("Name:   ", QStringLiteral("View1"));
        objects_.Put("CreationDate:   ", Created());
        objects_.Put("GUIName:    ", QStringLiteral("View"));
        objects_.Put("Win:    ", window);
        objects_.Put("CSMgr:  ", colors);
        objects_.Put("Graphics:   ", graphics);
        for (const ObjectRef theme : refs_.themes)
            objects_.Put("Theme:  ", theme);
        objects_.Put("Dpy:    ", display_);
        objects_.Put("TOCWidth:   ", 150);
        PutWindow(window, refs_.view);
        objects_.Put("Open:   ", 1);
        objects_.Begin(colors, "CSMgr");
        objects_.Begin(graphics, "GList");
        objects_.Put("Dpy:    ", display_);
    }

    void PutDisplay() {
        const ObjectRef page = objects_.Announce();
        const ObjectRef mouse = objects_.Announce();
        objects_.Begin(display_, "MapDpy");
        objects_.Put("Left:   ", facts_.extent.left);
        objects_.Put("Bottom: ", facts_.extent.bottom);
        objects_.Put("Top:    ", facts_.extent.top);
        objects_.Put("Right:  ", facts_.extent.right);
        objects_.Put("FrameTop:   3.50000000000000");
        objects_.Put("FrameRight: 4.79166666666667");
        objects_.Put("PageDpy:    ", page);
        objects_.Put("FitToPage:  ", 1);
        objects_.Put("MouseLoc:   ", mouse);
        PutPage(page);
        objects_.Begin(mouse, "PointD");
        objects_.Put("x:  94.16454592559524");
        objects_.Put("y:  26.90552016369048");
    }

    void PutPage(ObjectRef page) {
        objects_.Begin(page, "PageDpy");
        objects_.Put("Top:    3.50000000000000");
        objects_.Put("Right:  4.79166666666667");
        objects_.Put("ReportUnits:    ", 1);
        objects_.Put("Units:  ", 1);
        objects_.Put("ZoomRight:  4.79166666666667");
        objects_.Put("ZoomTop:    3.50000000000000");
        objects_.Put("GridSpacingX:   0.25000000000000");
        objects_.Put("GridSpacingY:   0.25000000000000");
    }

    ProjectObjects& objects_;
    const ProjectRefs& refs_;
    const ProjectFacts& facts_;
    ObjectRef project_;
    ObjectRef tableDocument_;
    ObjectRef selection_;
    ObjectRef display_;
    QString base_;
};

} // namespace

ProjectRefs AnnounceObjects(ProjectObjects& objects, int layers) {
    ProjectRefs refs;
    for (ObjectRef* const each : {&refs.view, &refs.table, &refs.names, &refs.workFolder})
        *each = objects.Announce();
    for (ObjectRef& field : refs.fields)
        field = objects.Announce();
    for (int layer = 0; layer < layers; ++layer)
        refs.themes.push_back(objects.Announce());
    return refs;
}

void PutHead(ProjectObjects& objects, const ProjectRefs& refs, const ProjectFacts& facts) {
    Head(objects, refs, facts).Put();
}

void PutTail(ProjectObjects& objects, const ProjectRefs& refs) {
    objects.Begin(refs.names, "NameDict");
    PutFileName(objects, refs.workFolder, QStringLiteral("$HOME"));
}

void PutFileName(ProjectObjects& objects, ObjectRef file, const QString& path) {
    objects.Begin(file, "FN");
    objects.Put("Path:   ", path);
}

void PutField(ProjectObjects& objects, ObjectRef field, ObjectRef table, const QString& name, int type, int pixels) {
    objects.Begin(field, "Field");
    objects.Put("Name:       ", name);
    objects.Put("BTab:       ", table);
    objects.Put("Alias:      ", name);
    objects.Put("Visible:    ", 1);
    objects.Put("Type:       ", type);
    objects.Put("Order:      ", -1);
    objects.Put("Pixels:     ", pixels);
}

void PutSelection(ProjectObjects& objects, ObjectRef selection, int records) {
    objects.Begin(selection, "Bitmap");
    objects.Put("NumBits:    ", records);
}

} // namespace tessaro
