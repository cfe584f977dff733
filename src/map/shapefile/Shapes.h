#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

namespace tessaro {

/// What a collection of shapes may be handed; objects are shared, so a change of one shows wherever it is held.
class ShapeObject {
  public:
    virtual ~ShapeObject() = default;

  protected:
    ShapeObject() = default;
    ShapeObject(const ShapeObject&) = default;
    ShapeObject& operator=(const ShapeObject&) = default;
};
using ShapeObjectPointer = std::shared_ptr<ShapeObject>;

/// The box of a shape, and whether it is a null shape.
class IShape : public ShapeObject {
  public:
    [[nodiscard]] virtual double Top() const = 0;
    [[nodiscard]] virtual double Bottom() const = 0;
    [[nodiscard]] virtual double Left() const = 0;
    [[nodiscard]] virtual double Right() const = 0;

    [[nodiscard]] bool IsNull() const { return null_; }
    void MakeNull(bool null) { null_ = null; }

  private:
    bool null_ = false;
};

class CPoint final : public IShape {
  public:
    CPoint() = default;
    CPoint(double x, double y) : x_(x), y_(y) {}

    [[nodiscard]] double X() const { return x_; }
    [[nodiscard]] double Y() const { return y_; }
    void X(double value) { x_ = value; }
    void Y(double value) { y_ = value; }

    [[nodiscard]] double Top() const override { return y_; }
    [[nodiscard]] double Bottom() const override { return y_; }
    [[nodiscard]] double Left() const override { return x_; }
    [[nodiscard]] double Right() const override { return x_; }

  private:
    double x_ = 0;
    double y_ = 0;
};

/// Two corners: upper left and lower right.
class CRect final : public IShape {
  public:
    [[nodiscard]] double Top() const override { return upperLeft_.Y(); }
    [[nodiscard]] double Left() const override { return upperLeft_.X(); }
    [[nodiscard]] double Bottom() const override { return lowerRight_.Y(); }
    [[nodiscard]] double Right() const override { return lowerRight_.X(); }
    void Top(double value) { upperLeft_.Y(value); }
    void Bottom(double value) { lowerRight_.Y(value); }
    void Left(double value) { upperLeft_.X(value); }
    void Right(double value) { lowerRight_.X(value); }

    void MakeEmpty() { MakeXY(0, 0, 0, 0); }
    void Make(const CPoint& upperLeft, const CPoint& lowerRight);
    void MakeXY(double left, double top, double right, double bottom);

  private:
    CPoint upperLeft_;
    CPoint lowerRight_;
};

/// Holds a box; part of the object model only.
class CShape final : public ShapeObject {
  public:
    [[nodiscard]] double Top() const { return box_.Top(); }
    [[nodiscard]] double Bottom() const { return box_.Bottom(); }
    [[nodiscard]] double Left() const { return box_.Left(); }
    [[nodiscard]] double Right() const { return box_.Right(); }

  private:
    CRect box_;
};

/// Stands for no shape; part of the object model only.
class CNullShape final : public ShapeObject {};

/// One ring: points in order, and their box.
class CPart final : public ShapeObject {
  public:
    [[nodiscard]] double Left() const { return box_.Left(); }
    [[nodiscard]] double Right() const { return box_.Right(); }
    [[nodiscard]] double Top() const { return box_.Top(); }
    [[nodiscard]] double Bottom() const { return box_.Bottom(); }
    void Left(double value) { box_.Left(value); }
    void Right(double value) { box_.Right(value); }
    void Top(double value) { box_.Top(value); }
    void Bottom(double value) { box_.Bottom(value); }

    [[nodiscard]] qint32 Count() const { return static_cast<qint32>(points_.size()); }
    /// The point at an index from 1; throws error 9 for an index that there is not. So does Remove.
    [[nodiscard]] std::shared_ptr<CPoint> Item(qint32 index) const;
    [[nodiscard]] auto begin() const { return points_.begin(); }
    [[nodiscard]] auto end() const { return points_.end(); }
    /// Afterwards the box is the last point alone; it stays as it was when no point is left.
    void Remove(qint32 index);
    /// Takes a CPoint only (error 0x8004020F). The box grows; when it grows to the left it does not look to the right,
    /// nor upwards when it grew downwards.
    void Add(const ShapeObjectPointer& object);

  private:
    void GrowBox(const CPoint& point);

    std::vector<std::shared_ptr<CPoint>> points_;
    CRect box_;
};

/// Rings in order, and their box.
class CPolygon final : public IShape {
  public:
    [[nodiscard]] qint32 Count() const { return static_cast<qint32>(parts_.size()); }
    [[nodiscard]] auto begin() const { return parts_.begin(); }
    [[nodiscard]] auto end() const { return parts_.end(); }
    /// The part at an index from 1; throws error 9 for an index that there is not. So does Remove.
    [[nodiscard]] std::shared_ptr<CPart> Item(qint32 index) const;
    /// Takes a CPart only (error 0x8004020F). The box grows to hold the part's; the first part gives it its own.
    void Add(const ShapeObjectPointer& object);
    /// Leaves the box as it is.
    void Remove(qint32 index);

    void Left(double value) { box_.Left(value); }
    void Right(double value) { box_.Right(value); }
    void Top(double value) { box_.Top(value); }
    void Bottom(double value) { box_.Bottom(value); }
    [[nodiscard]] double Top() const override { return box_.Top(); }
    [[nodiscard]] double Bottom() const override { return box_.Bottom(); }
    [[nodiscard]] double Left() const override { return box_.Left(); }
    [[nodiscard]] double Right() const override { return box_.Right(); }

    /// Is not computed: shows the message "NOT IMPLEMENTED" and gives 0.
    [[nodiscard]] double Area() const;

  private:
    std::vector<std::shared_ptr<CPart>> parts_;
    CRect box_;
};

} // namespace tessaro
