#include "office/SlideShow.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/Transfer.h"

#include <QRectF>

#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/drawing/XDrawPagesSupplier.hpp>
#include <com/sun/star/drawing/XDrawView.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/util/XModifiable.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::beans::XPropertySet;
using com::sun::star::drawing::XDrawPage;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using Model = Document::Model;

constexpr sal_Int32 kSlideWidth = 25400; ///< 4:3, 1/100 mm
constexpr sal_Int32 kSlideHeight = 19050;
constexpr double kMargin = 0.05; ///< of the slide's width, on each side
constexpr sal_Int16 kBlankLayout = 20;

auto PagesOf(const Model& model) {
    return Need<com::sun::star::drawing::XDrawPagesSupplier>(model)->getDrawPages();
}

Reference<XDrawPage> PageOf(const Model& model, int number) {
    Reference<XDrawPage> page;
    PagesOf(model)->getByIndex(number - 1) >>= page;
    return page;
}

/// Size of a picture in any unit; only its proportions count.
com::sun::star::awt::Size ProportionsOf(const Reference<com::sun::star::graphic::XGraphic>& graphic) {
    const auto properties = Need<XPropertySet>(graphic);
    com::sun::star::awt::Size size;
    properties->getPropertyValue("Size100thMM") >>= size;
    if (size.Width <= 0 || size.Height <= 0) properties->getPropertyValue("SizePixel") >>= size;
    if (size.Width <= 0 || size.Height <= 0) return {4, 3};
    return size;
}

struct Proportions {
    double width = 0;
    double height = 0;
};

void AddGraphic(const Model& model, const Reference<XDrawPage>& page,
                const Reference<com::sun::star::graphic::XGraphic>& graphic, const QRectF& place) {
    const auto& factory = model.Factory();
    const auto shape =
        Need<com::sun::star::drawing::XShape>(factory->createInstance("com.sun.star.drawing.GraphicObjectShape"));
    Need<XPropertySet>(shape)->setPropertyValue("Graphic", Any(graphic));
    page->add(shape);
    shape->setPosition({static_cast<sal_Int32>(place.x()), static_cast<sal_Int32>(place.y())});
    shape->setSize({static_cast<sal_Int32>(place.width()), static_cast<sal_Int32>(place.height())});
}

} // namespace

SlideShow::SlideShow(std::shared_ptr<Document> document) : document_(std::move(document)) {}

bool SlideShow::IsOpen() const {
    return document_ && document_->IsOpen();
}

QString SlideShow::FileName() const {
    return document_ ? document_->FileName() : QString();
}

int SlideShow::SlideCount() const {
    int count = 0;
    Known(document_).Run([&](const Model& model) { count = PagesOf(model)->getCount(); });
    return count;
}

void SlideShow::SetFourToThree() {
    Known(document_).Run([&](const Model& model) {
        const auto page = Need<XPropertySet>(PageOf(model, 1));
        page->setPropertyValue("Width", Any(kSlideWidth));
        page->setPropertyValue("Height", Any(kSlideHeight));
        page->setPropertyValue("Layout", Any(kBlankLayout));
    });
}

int SlideShow::AppendPictures(const QList<QByteArray>& pictures) {
    int number = 0;
    Known(document_).Run([&](const Model& model) {
        std::vector<Reference<com::sun::star::graphic::XGraphic>> graphics;
        Proportions whole;
        for (const QByteArray& picture : pictures) {
            graphics.push_back(GraphicOf(document_->connection(), picture));
            const auto size = ProportionsOf(graphics.back());
            whole = {std::max(whole.width, double(size.Width)), whole.height + size.Height};
        }
        const auto pages = PagesOf(model);
        number = pages->getCount() + 1;
        pages->insertNewByIndex(number - 1);
        const auto page = PageOf(model, number);
        const auto properties = Need<XPropertySet>(page);
        properties->setPropertyValue("Layout", Any(kBlankLayout));
        sal_Int32 width = kSlideWidth;
        sal_Int32 height = kSlideHeight;
        properties->getPropertyValue("Width") >>= width;
        properties->getPropertyValue("Height") >>= height;
        const double margin = width * kMargin;
        const double scale = std::min((width - 2 * margin) / whole.width, (height - 2 * margin) / whole.height);
        const double left = (width - whole.width * scale) / 2;
        double top = (height - whole.height * scale) / 2;
        for (const auto& graphic : graphics) {
            const auto size = ProportionsOf(graphic);
            AddGraphic(model, page, graphic, {left, top, size.Width * scale, size.Height * scale});
            top += size.Height * scale;
        }
    });
    return number;
}

void SlideShow::RemoveSlide(int number) {
    Known(document_).Run([&](const Model& model) { PagesOf(model)->remove(PageOf(model, number)); });
}

void SlideShow::GoToSlide(int number) {
    Known(document_).Run([&](const Model& model) {
        const Reference<com::sun::star::drawing::XDrawView> view(model->getCurrentController(),
                                                                 com::sun::star::uno::UNO_QUERY);
        if (view.is()) view->setCurrentPage(PageOf(model, number));
    });
}

bool SlideShow::IsModified() const {
    bool modified = false;
    Known(document_).Run(
        [&](const Model& model) { modified = Need<com::sun::star::util::XModifiable>(model)->isModified(); });
    return modified;
}

void SlideShow::Save() {
    Known(document_).Store(Known(document_).FileName());
}

void SlideShow::SaveAs(const QString& file) {
    Known(document_).Store(file);
}

void SlideShow::Close() {
    if (document_) document_->Close();
}

} // namespace tessaro::office
