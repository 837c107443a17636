#include "maker/Scene.h"

#include "maker/Scenes.h"

#include <QHash>

namespace ludarium::demo {

namespace {

const QHash<QString, void (*)(Brush &)> &painters() {
    static const QHash<QString, void (*)(Brush &)> table{{QStringLiteral("space"), scenes::space},
                                                         {QStringLiteral("clouds"), scenes::clouds},
                                                         {QStringLiteral("plasma"), scenes::plasma},
                                                         {QStringLiteral("storm"), scenes::storm},
                                                         {QStringLiteral("city"), scenes::city},
                                                         {QStringLiteral("grid"), scenes::grid},
                                                         {QStringLiteral("castle"), scenes::castle},
                                                         {QStringLiteral("dusk"), scenes::dusk},
                                                         {QStringLiteral("desert"), scenes::desert},
                                                         {QStringLiteral("garden"), scenes::garden},
                                                         {QStringLiteral("forest"), scenes::forest},
                                                         {QStringLiteral("mountains"), scenes::mountains},
                                                         {QStringLiteral("clock"), scenes::clock},
                                                         {QStringLiteral("hedge"), scenes::hedge},
                                                         {QStringLiteral("lighthouse"), scenes::lighthouse},
                                                         {QStringLiteral("swamp"), scenes::swamp},
                                                         {QStringLiteral("sea"), scenes::sea},
                                                         {QStringLiteral("winter"), scenes::winter},
                                                         {QStringLiteral("cave"), scenes::cave},
                                                         {QStringLiteral("reef"), scenes::reef}};
    return table;
}

} // namespace

void paintScene(QPainter &painter, const QRectF &area, const QString &scene, const QString &seed) {
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    Brush brush(painter, area, seed);
    painters().value(scene, scenes::grid)(brush);
    brush.vignette(0.45);
    painter.restore();
}

SceneInk sceneInk(const QString &scene) {
    using scenes::rgb;
    static const QHash<QString, SceneInk> table{
        {QStringLiteral("space"), {rgb(0xfff4d0), rgb(0x1a0838), rgb(0xffb24a)}},
        {QStringLiteral("castle"), {rgb(0xffe9b0), rgb(0x24103a), rgb(0xf2784a)}},
        {QStringLiteral("lighthouse"), {rgb(0xffffff), rgb(0x0a1e34), rgb(0xf2c25a)}},
        {QStringLiteral("swamp"), {rgb(0xf4ffc0), rgb(0x05241a), rgb(0x8ee04a)}},
        {QStringLiteral("dusk"), {rgb(0xfff2c8), rgb(0x3a1450), rgb(0xff8a4a)}},
        {QStringLiteral("city"), {rgb(0xfff0c8), rgb(0x0c1030), rgb(0xf6b24a)}},
        {QStringLiteral("sea"), {rgb(0xffffff), rgb(0x0a3a5e), rgb(0xe8503c)}},
        {QStringLiteral("winter"), {rgb(0xffffff), rgb(0x12305e), rgb(0x6ac8f2)}},
        {QStringLiteral("clock"), {rgb(0xfff0c8), rgb(0x2a1406), rgb(0xe8a03c)}},
        {QStringLiteral("clouds"), {rgb(0xf4f6ff), rgb(0x0a1228), rgb(0xd0a85a)}},
        {QStringLiteral("desert"), {rgb(0xfff4c8), rgb(0x5a1c1c), rgb(0xffd23c)}},
        {QStringLiteral("garden"), {rgb(0xffffff), rgb(0x1c4a24), rgb(0xf2609a)}},
        {QStringLiteral("cave"), {rgb(0xffe8b0), rgb(0x180c1c), rgb(0x6ae0d0)}},
        {QStringLiteral("forest"), {rgb(0xfff8d0), rgb(0x0c2a1c), rgb(0xd8b84a)}},
        {QStringLiteral("mountains"), {rgb(0xfff6e0), rgb(0x2a2448), rgb(0xc8503c)}},
        {QStringLiteral("hedge"), {rgb(0xfff4d0), rgb(0x3a1430), rgb(0xf2c84a)}},
        {QStringLiteral("reef"), {rgb(0xf4ffff), rgb(0x06233e), rgb(0x5ae0e0)}},
        {QStringLiteral("storm"), {rgb(0xfff6a0), rgb(0x1c0a2c), rgb(0xe03c4a)}}};
    return table.value(scene, SceneInk{rgb(0xffffff), rgb(0x180830), rgb(0x5ae0ff)});
}

} // namespace ludarium::demo
