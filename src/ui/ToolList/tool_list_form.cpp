// The form of the tool list window: its controls, their layout, captions,
// fonts and tab order, and the wiring of their signals to the handlers.
#include "leave_checker.h"
#include "padded_item_delegate.h"
#include "picture_view.h"
#include "qt_text.h"
#include "settings_fonts.h"
#include "tool_list_model.h"
#include "tool_list_window.h"

#include <QAction>
#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace qor {

namespace {

constexpr const char *ListTitle = "    Tool List";

} // namespace

void ToolListWindow::BuildControls()
{
    auto lineEdit = [this](const char *name) {
        auto *edit = new QLineEdit(this);
        edit->setObjectName(name);
        return edit;
    };
    m_toolFileName = lineEdit("ToolFileName");
    m_magIni = lineEdit("MagIni");
    m_magIni->setMaxLength(8);
    m_magIni->setAlignment(Qt::AlignRight);
    m_aArbType = lineEdit("aArbType");
    m_aArbType->setReadOnly(true);
    m_aArbType->setFocusPolicy(Qt::NoFocus);
    m_selectedItem = lineEdit("SelectedItem");
    m_selectedItem->hide(); // holds the double-clicked row's text
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        m_text[i] = lineEdit(qPrintable(QString("Text%1").arg(i + 1)));
        m_text[i]->hide(); // spare boxes of the form, not used by this layout
    }

    m_autoRead = new QCheckBox(this);
    m_autoRead->setObjectName("autoRead");

    m_aArbEditB = new QPushButton(this);
    m_aArbEditB->setObjectName("aArbEditB");
    m_aArbEditB->setAutoDefault(false);
    for (std::size_t i = 0; i < m_command.size(); ++i) {
        m_command[i] = new QPushButton(this);
        m_command[i]->setObjectName(QString("Command%1").arg(i + 1));
        m_command[i]->setAutoDefault(false);
    }

    for (std::size_t i = 0; i < m_label.size(); ++i) {
        m_label[i] = new QLabel(this);
        m_label[i]->setObjectName(QString("Label%1").arg(i + 1));
        m_label[i]->setTextFormat(Qt::PlainText);
        if (i > TitleLabel) {
            m_label[i]->hide(); // spare labels of the form, not used by this layout
        }
    }
    m_label[FileLabel]->setBuddy(m_toolFileName);
    m_label[MagIniLabel]->setBuddy(m_magIni);

    m_model = new ToolListModel(this);
    m_model->SetRows(&m_contents.Rows);
    m_listV1 = new QTableView(this);
    m_listV1->setObjectName("ListV1");
    m_listV1->setModel(m_model);
    m_listV1->setItemDelegate(new PaddedItemDelegate(m_listV1));
    auto *headerStyle = new PaddedHeaderStyle;
    headerStyle->setParent(m_listV1->horizontalHeader());
    m_listV1->horizontalHeader()->setStyle(headerStyle);
    m_listV1->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_listV1->setSelectionMode(QAbstractItemView::SingleSelection);
    m_listV1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_listV1->setTabKeyNavigation(false);
    m_listV1->setWordWrap(false);
    m_listV1->setAlternatingRowColors(true);
    m_listV1->setShowGrid(false);
    m_listV1->setCornerButtonEnabled(false);
    m_listV1->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_listV1->verticalHeader()->hide();
    m_listV1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_listV1->horizontalHeader()->setHighlightSections(false);
    m_listV1->horizontalHeader()->setSectionsMovable(false);
    m_listV1->horizontalHeader()->setStretchLastSection(true);
    // The selected row stays clearly marked while another control has the
    // focus (the picture, the buttons).
    QPalette palette = m_listV1->palette();
    for (QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Inactive, role, palette.color(QPalette::Active, role));
    }
    m_listV1->setPalette(palette);
    m_listV1->installEventFilter(this);

    m_list1 = new QListWidget(this);
    m_list1->setObjectName("List1");
    m_list1->hide(); // a second way to pick a position, not used by this layout

    m_param = new QPlainTextEdit(this);
    m_param->setObjectName("Param");
    m_param->setReadOnly(true);
    m_param->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_param->setFocusPolicy(Qt::ClickFocus);

    m_view = new PictureView(this);
    m_view->setObjectName("View");
    m_view->SetPaintHook([this](PictureSurface &surface) { DrawPicture(surface); });

    m_aArbEditB->installEventFilter(this);
}

void ToolListWindow::BuildLayout()
{
    auto *file = new QGridLayout;
    file->setHorizontalSpacing(8);
    file->addWidget(m_label[FileLabel], 0, 0);
    file->addWidget(m_toolFileName, 0, 1);
    file->addWidget(m_command[Browse], 0, 2);
    file->addWidget(m_command[Read], 0, 3);
    file->addWidget(m_label[MagIniLabel], 1, 0);
    auto *tableLine = new QHBoxLayout;
    tableLine->setSpacing(8);
    tableLine->addWidget(m_magIni);
    tableLine->addSpacing(24);
    tableLine->addWidget(m_label[ArborLabel]);
    tableLine->addWidget(m_aArbType);
    tableLine->addWidget(m_aArbEditB);
    tableLine->addStretch(1);
    file->addLayout(tableLine, 1, 1);
    file->addWidget(m_autoRead, 1, 2, 1, 2);
    file->setColumnStretch(1, 1);

    auto *listPane = new QWidget(this);
    auto *listLayout = new QVBoxLayout(listPane);
    listLayout->setContentsMargins(0, 0, 0, 0);
    listLayout->setSpacing(2);
    listLayout->addWidget(m_label[TitleLabel]);
    auto *findLine = new QHBoxLayout;
    findLine->setSpacing(6);
    findLine->addWidget(m_findLabel);
    findLine->addWidget(m_find, 1);
    findLine->addSpacing(12);
    findLine->addWidget(m_undoButton);
    findLine->addWidget(m_redoButton);
    listLayout->addLayout(findLine);
    listLayout->addWidget(m_listV1, 1);

    auto *toolPane = new QWidget(this);
    toolPane->setMinimumWidth(240);
    auto *toolLayout = new QVBoxLayout(toolPane);
    toolLayout->setContentsMargins(0, 0, 0, 0);
    toolLayout->setSpacing(2);
    m_view->setParent(toolPane);
    auto *viewFrame = new QFrame(toolPane);
    viewFrame->setFrameShape(QFrame::StyledPanel);
    viewFrame->setFrameShadow(QFrame::Sunken);
    auto *viewFrameLayout = new QVBoxLayout(viewFrame);
    viewFrameLayout->setContentsMargins(1, 1, 1, 1);
    viewFrameLayout->addWidget(m_view);
    toolLayout->addWidget(viewFrame, 1);
    toolLayout->addSpacing(4);
    toolLayout->addWidget(m_label[ParamLabel]);
    toolLayout->addWidget(m_param);

    auto *splitter = m_splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setObjectName("ListSplitter");
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(listPane);
    splitter->addWidget(toolPane);
    // A wider window widens the picture; the list keeps its columns' width.
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_command[Edit]);
    buttons->addWidget(m_command[NewTool]);
    buttons->addWidget(m_command[Delete]);
    buttons->addSpacing(24);
    buttons->addWidget(m_command[Save]);
    buttons->addWidget(m_tableButton);
    buttons->addStretch(1);
    buttons->addWidget(m_command[Help]);
    buttons->addWidget(m_command[About]);
    buttons->addSpacing(24);
    buttons->addWidget(m_command[Close]);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setSpacing(8);
    layout->addLayout(file);
    layout->addWidget(splitter, 1);
    layout->addLayout(buttons);
}

void ToolListWindow::SetCaptions()
{
    auto text = [this](std::string_view key) { return Qs(m_ws.Text("frmList", key)); };
    for (std::size_t i = 0; i < m_command.size(); ++i) {
        m_command[i]->setText(text("Text" + std::to_string(i + 1)));
    }
    m_aArbEditB->setText(text("Text10"));
    m_autoRead->setText(text("Text11"));
    m_label[FileLabel]->setText(text("Text12"));
    m_label[MagIniLabel]->setText(text("Text13"));
    m_label[ArborLabel]->setText(text("Text14"));
    m_label[ParamLabel]->setText(text("Text15"));
    m_label[TitleLabel]->setText(ListTitle);
    m_findLabel->setText(text("Text40"));
    m_find->setToolTip(text("Text41"));
    m_undoButton->setText(text("Text42"));
    m_redoButton->setText(text("Text43"));
    m_cut->setText(text("Text44"));
    m_copy->setText(text("Text45"));
    m_paste->setText(text("Text46"));
    m_swap->setText(text("Text47"));
    m_tableButton->setText(text("Text48"));
    m_print->setText(text("Text49"));
    m_savePdf->setText(text("Text50"));
    m_exportCsv->setText(text("Text51"));
    m_importCsv->setText(text("Text52"));
    m_compare->setText(text("Text53"));
    QStringList headings;
    for (std::string_view key : ListColumnHeadingKeys) {
        headings << text(key);
    }
    m_model->SetHeadings(headings);
}

void ToolListWindow::SetFonts()
{
    const StartupGlobals &g = m_ws.Globals;
    ApplySettingsFont(*m_listV1, g.ListViewFontSize);
    m_listV1->horizontalHeader()->setFont(
        SettingsFont(m_listV1->horizontalHeader()->font(), g.ColumnHeaderFontSize));
    for (QLineEdit *box : {m_toolFileName, m_magIni, m_aArbType, m_selectedItem, m_find}) {
        ApplySettingsFont(*box, g.TextBoxFontSize);
    }
    for (QLineEdit *box : m_text) {
        ApplySettingsFont(*box, g.TextBoxFontSize);
    }
    m_param->setFont(FixedSettingsFont(g.TextBoxFontSize));
    for (QPushButton *button : m_command) {
        ApplySettingsFont(*button, g.ButtonFontSize, g.ButtonFontBold);
    }
    ApplySettingsFont(*m_aArbEditB, g.ButtonFontSize, g.ButtonFontBold);
    ApplySettingsFont(*m_tableButton, g.ButtonFontSize, g.ButtonFontBold);
    QFont title = m_label[TitleLabel]->font();
    title.setBold(true);
    m_label[TitleLabel]->setFont(title);

    const QFontMetrics list(m_listV1->font());
    m_listV1->verticalHeader()->setDefaultSectionSize(list.height() + 6);
    const QFontMetrics box(m_magIni->font());
    m_magIni->setFixedWidth(box.horizontalAdvance("000000") + 16);
    m_aArbType->setFixedWidth(box.horizontalAdvance("ARBOR2") * 3 / 2 + 16);
    // The summary has at most seven lines; the rest of the height goes to
    // the picture.
    const QFontMetrics fixed(m_param->font());
    const int frame = 2 * m_param->frameWidth() + 8;
    const int scrollBar = m_param->horizontalScrollBar()->sizeHint().height();
    m_param->setMinimumHeight(fixed.lineSpacing() * 4 + frame + scrollBar);
    m_param->setMaximumHeight(fixed.lineSpacing() * 7 + frame + scrollBar);
}

void ToolListWindow::SetColumnWidths()
{
    const QFontMetrics list(m_listV1->font());
    const QFontMetrics header(m_listV1->horizontalHeader()->font());
    const int padding = 2 * PaddedItemDelegate::Padding + 4;
    const ToolTable &table = m_ws.Table;
    auto widest = [&list](const auto &texts) {
        int width = 0;
        for (const std::string &text : texts) {
            width = std::max(width, list.horizontalAdvance(Qs(text)));
        }
        return width;
    };
    const std::array<int, ListColumnCount> content = {
        list.horizontalAdvance("00000"),
        widest(table.KindNames),
        list.horizontalAdvance("-000.000"),
        list.horizontalAdvance("-000.000"),
        list.averageCharWidth() * 22,
        widest(table.ArborTypeNames),
        list.horizontalAdvance("-000.000"),
        list.horizontalAdvance("000"),
        list.horizontalAdvance(Qs(m_ws.Text("String", "Str31"))),
    };
    for (int column = 0; column < ListColumnCount; ++column) {
        const int heading =
            header.horizontalAdvance(m_model->headerData(column, Qt::Horizontal).toString());
        m_listV1->setColumnWidth(
            column, std::max(content[static_cast<std::size_t>(column)], heading + 8) + padding);
    }
    m_listV1->setMinimumWidth(ListWidth() / 2);
}

int ToolListWindow::ListWidth() const
{
    int width = 2 * m_listV1->frameWidth() + m_listV1->verticalScrollBar()->sizeHint().width() + 6;
    for (int column = 0; column < ListColumnCount; ++column) {
        width += m_listV1->columnWidth(column);
    }
    return width;
}

void ToolListWindow::SetTabOrder()
{
    QWidget *order[] = {m_toolFileName,    m_command[Browse], m_command[Read], m_magIni,
                        m_aArbEditB,       m_autoRead,        m_find,          m_undoButton,
                        m_redoButton,      m_listV1,          m_command[Edit], m_command[NewTool],
                        m_command[Delete], m_command[Save],   m_tableButton,   m_command[Help],
                        m_command[About],  m_command[Close]};
    for (std::size_t i = 1; i < std::size(order); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}

void ToolListWindow::Connect()
{
    const std::array<void (ToolListWindow::*)(), 9> handlers = {
        &ToolListWindow::OnCommand1, &ToolListWindow::OnCommand2, &ToolListWindow::OnCommand3,
        &ToolListWindow::OnCommand4, &ToolListWindow::OnCommand5, &ToolListWindow::OnCommand6,
        &ToolListWindow::OnCommand7, &ToolListWindow::OnCommand8, &ToolListWindow::OnCommand9};
    for (std::size_t i = 0; i < m_command.size(); ++i) {
        connect(m_command[i], &QPushButton::clicked, this, handlers[i]);
    }
    connect(m_toolFileName, &QLineEdit::returnPressed, this, &ToolListWindow::OnCommand2);
    connect(m_aArbEditB, &QPushButton::clicked, this, &ToolListWindow::OnArborEdit);
    connect(m_autoRead, &QCheckBox::clicked, this, &ToolListWindow::OnAutoReadClicked);
    connect(m_listV1->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { OnCurrentRowChanged(current); });
    connect(m_listV1, &QTableView::doubleClicked, this, &ToolListWindow::OnRowDoubleClicked);
    connect(m_list1, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_commands.Select(row)) {
            ShowParam();
        }
    });
    connect(m_list1, &QListWidget::itemDoubleClicked, this, [this] { OnCommand3(); });

    // The initial magazine is checked when the focus leaves it, and a refusal
    // puts the focus back. Save checks it first; closing does not.
    m_checker = new LeaveChecker(this);
    m_checker->Watch(m_magIni, [this] { return OnMagIniLeave(); });
    m_checker->DeferFor(m_command[Save]);
    m_checker->DeferFor(m_command[Close]);

    auto *save = new QShortcut(QKeySequence::Save, this);
    connect(save, &QShortcut::activated, this, [this] {
        if (m_command[Save]->isEnabled()) {
            OnCommand4();
        }
    });
    auto *open = new QShortcut(QKeySequence::Open, this);
    connect(open, &QShortcut::activated, this, &ToolListWindow::OnCommand1);
    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, &ToolListWindow::OnCommand8);
}

} // namespace qor
