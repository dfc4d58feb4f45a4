// XGenericTypes_test.cpp: a schema read with and without its creator, bounds, the
// consistency checks and defaults handed to a node.
#include "orv/XGenericTypes.h"

#include "XmlShape.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using orv::XGenericTypes;
using orv::XNode;
using orv::test::linesLoggedBy;

namespace {

char const schemaText[] = R"(<doc><XGenericTypes>
    <scene icon="s.png" iconBig="S.png">
        <Child type="light" countMin="1" countMax="*"/><Child type="mesh" countMax="n"/>
        <Attr name="title" default="untitled" toolTip="shown on top"/>
        <Attr name="scale" type="double" get_min="0" get_max="10" default="1"/>
        <Attr name="mode" combo="0,fast,good" readOnly="true"/>
    </scene>
    <light><Attr name="power" type="double"/></light>
    <mesh/>
</XGenericTypes></doc>)";

std::unique_ptr<XNode> schemaDoc(char const *text = schemaText) {
    orv::XGenericTypeCreator const creator;
    return std::unique_ptr<XNode>(XNode::parseString(QString::fromUtf8(text), &creator));
}

} // namespace

TEST(XGenericTypes, NeedsItsCreatorToBeSeen) {
    std::unique_ptr<XNode> plain = orv::test::parsed(schemaText);
    EXPECT_EQ(linesLoggedBy([&] { EXPECT_EQ(plain->getXGenericTypes(), nullptr); }),
              std::vector<QString>({"XNode::getXGenericTypes, *we found /<XGenericTypes> but its "
                                    "not the right C++ type.",
                                    "Did you forget to add a proper 'XmlNodeCreator' instance ?"}));
    std::unique_ptr<XNode> none = orv::test::parsed("<doc/>");
    EXPECT_EQ(none->getXGenericTypes(), nullptr);
    std::unique_ptr<XNode> doc = schemaDoc();
    XGenericTypes *types = doc->nodeAt(0)->nodeAt(1)->getXGenericTypes();
    ASSERT_NE(types, nullptr);
    EXPECT_EQ(types->toString(), QStringLiteral("XGenericTypes [3]{scene,light,mesh}"));
    EXPECT_EQ(types->getTheRootNode()->getType(), QStringLiteral("scene"));
}

TEST(XGenericTypes, DescribesTypesWithBoundsAttributesAndDefaults) {
    std::unique_ptr<XNode> doc = schemaDoc();
    XGenericTypes *types = doc->getXGenericTypes();
    ASSERT_NE(types, nullptr);
    orv::Scheme const scene = types->getScheme("scene");
    ASSERT_TRUE(scene.isValid());
    ASSERT_EQ(scene.getChildren().size(), 2u);
    orv::Child const *light = scene.getChildren()[0];
    EXPECT_EQ(light->toString(),
              QStringLiteral("theType 'light', countMin:1, countMax:4294967295"));
    EXPECT_EQ(scene.getChildren()[1]->countMax(), 0xFFFFFFFFu);
    EXPECT_EQ(scene.getChildren()[1]->countMin(), 0u);
    ASSERT_EQ(scene.getAttributes().size(), 3u);
    orv::Attr const *mode = scene.getAttributes()[2];
    EXPECT_TRUE(mode->isReadOnly());
    EXPECT_TRUE(mode->isEnabled());
    EXPECT_EQ(mode->getParentType(), QStringLiteral("scene"));
    EXPECT_EQ(mode->getDefault(), QString());
    EXPECT_EQ(mode->getStringEnum("combo", orv::StringEnum()).enumStr(), QStringLiteral("fast"));
    EXPECT_EQ(scene.pathIconBig(), QStringLiteral("S.png"));
    EXPECT_FALSE(types->getScheme("mesh").isValid());
    EXPECT_FALSE(types->getScheme("absent").isValid());

    std::unique_ptr<XNode> node(XNode::createRoot("scene", "", nullptr));
    scene.defaultiesToNode(node.get());
    EXPECT_EQ(orv::test::shape(node.get()), QStringLiteral("scene[mode=,scale=1,title=untitled]"));

    EXPECT_TRUE(types->checkTypeRelation("scene", "light"));
    EXPECT_FALSE(types->checkTypeRelation("scene", "scene"));
    EXPECT_FALSE(types->checkTypeRelation("absent", "light"));
    EXPECT_TRUE(types->hasChildType("mesh"));
}

TEST(XGenericTypes, ChecksThatChildrenAndAttributeTypesAreKnown) {
    std::unique_ptr<XNode> doc = schemaDoc();
    XGenericTypes *types = doc->getXGenericTypes();
    EXPECT_TRUE(types->checkDescription());
    EXPECT_TRUE(types->checkTypes(QSet<QString>{"string", "double"}));
    EXPECT_EQ(linesLoggedBy([&] { EXPECT_FALSE(types->checkTypes(QSet<QString>{"double"})); }),
              std::vector<QString>{"XGenericTypes::checkTypes, unknown type 'string'"});

    std::unique_ptr<XNode> broken = schemaDoc(
        R"(<XGenericTypes><a><Child type="a"/><Child type="ghost"/></a></XGenericTypes>)");
    types = broken->getXGenericTypes();
    ASSERT_NE(types, nullptr);
    EXPECT_EQ(linesLoggedBy([&] { EXPECT_FALSE(types->checkDescription()); }),
              std::vector<QString>{"XGenericTypes::checkDescription, Child type <ghost> not found "
                                   "within <XGenericTypes>...</XGenericTypes>"});
}
