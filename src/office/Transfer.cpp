#include "office/Transfer.h"

#include "office/Convert.h"

#include <QTemporaryDir>

#include <cmath>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/datatransfer/XTransferable.hpp>
#include <com/sun/star/datatransfer/XTransferableSupplier.hpp>
#include <com/sun/star/document/XExporter.hpp>
#include <com/sun/star/document/XFilter.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/frame/XDispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/graphic/XGraphicProvider.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <optional>

namespace tessaro::office {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::XInterface;

void SelectIn(const Document::Model& model, const Reference<XInterface>& what) {
    Need<com::sun::star::view::XSelectionSupplier>(model->getCurrentController())->select(Any(what));
}

QByteArray SelectionAs(const Document::Model& model, const QString& mimeType) {
    const auto transferable =
        Need<com::sun::star::datatransfer::XTransferableSupplier>(model->getCurrentController())->getTransferable();
    const QString wanted = mimeType.contains(QLatin1String("emf")) ? QStringLiteral("emf") : QStringLiteral("png");
    const auto flavors = transferable->getTransferDataFlavors();
    for (sal_Int32 place = 0; place < flavors.getLength(); ++place) {
        if (!FromUno(flavors[place].MimeType).contains(wanted, Qt::CaseInsensitive)) continue;
        Sequence<sal_Int8> bytes;
        if (transferable->getTransferData(flavors[place]) >>= bytes)
            return {reinterpret_cast<const char*>(bytes.getConstArray()), bytes.getLength()};
    }
    throw Error(Failure::Call, QStringLiteral("the selection can't be drawn as %1").arg(mimeType));
}

void Dispatch(const ProcessLink& connection, const Document::Model& model, const char* command) {
    const auto helper =
        Need<com::sun::star::frame::XDispatchHelper>(connection.Service("com.sun.star.frame.DispatchHelper"));
    helper->executeDispatch(Need<com::sun::star::frame::XDispatchProvider>(model->getCurrentController()->getFrame()),
                            Ascii(command), rtl::OUString(), 0, Sequence<com::sun::star::beans::PropertyValue>());
}

namespace {

Reference<XInterface> SetSource(const Reference<com::sun::star::document::XExporter>& exporter,
                                const std::function<Reference<XInterface>()>& find) {
    const auto source = LookAgain([&]() -> std::optional<Reference<XInterface>> {
        try {
            const Reference<XInterface> shape = find();
            exporter->setSourceDocument(Need<com::sun::star::lang::XComponent>(shape));
            return shape;
        } catch (const com::sun::star::lang::IllegalArgumentException&) {
            return std::nullopt;
        }
    });
    if (!source) throw Error(Failure::Call, QStringLiteral("a shape can't be drawn"));
    return *source;
}

} // namespace

QByteArray ShapeAs(const ProcessLink& connection, const std::function<Reference<XInterface>()>& find,
                   const QString& mimeType, int pixelWidth) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture"));
    const auto exporter =
        Need<com::sun::star::document::XExporter>(connection.Service("com.sun.star.drawing.GraphicExportFilter"));
    const Reference<XInterface> shape = SetSource(exporter, find);
    const auto size = Need<com::sun::star::drawing::XShape>(shape)->getSize();
    const auto pixelHeight = static_cast<sal_Int32>(
        std::lround(static_cast<double>(pixelWidth) * size.Height / std::max<sal_Int32>(size.Width, 1)));
    const auto data = Properties(
        {Property("PixelWidth", Any(static_cast<sal_Int32>(pixelWidth))), Property("PixelHeight", Any(pixelHeight))});
    auto arguments = Properties({Property("URL", Any(FileUrl(path))), Property("MediaType", Any(ToUno(mimeType))),
                                 Property("FilterData", Any(data))});
    QFile file(path);
    if (!Need<com::sun::star::document::XFilter>(exporter)->filter(arguments) || !file.open(QIODevice::ReadOnly))
        throw Error(Failure::Call, QStringLiteral("the shape can't be drawn as %1").arg(mimeType));
    return file.readAll();
}

Reference<com::sun::star::graphic::XGraphic> GraphicOf(const ProcessLink& connection, const QByteArray& picture) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("picture")));
    if (!file.open(QIODevice::WriteOnly) || file.write(picture) != picture.size())
        throw Error(Failure::File, QStringLiteral("a picture can't be handed over"));
    file.close();
    const auto provider =
        Need<com::sun::star::graphic::XGraphicProvider>(connection.Service("com.sun.star.graphic.GraphicProvider"));
    const auto graphic = provider->queryGraphic(Properties({Property("URL", Any(FileUrl(file.fileName())))}));
    if (!graphic.is()) throw Error(Failure::Call, QStringLiteral("this is no picture"));
    return graphic;
}

void KeepView(const Document::Model& model) {
    const auto window = model->getCurrentController()->getFrame()->getContainerWindow();
    if (window.is()) window->setVisible(true);
}

} // namespace tessaro::office
