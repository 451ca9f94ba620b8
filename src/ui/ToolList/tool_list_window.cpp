#include "tool_list_window.h"

#include "info_window.h"
#include "padded_item_delegate.h"
#include "param_string.h"
#include "picture_view.h"
#include "qt_text.h"
#include "settings_fonts.h"
#include "text_editor_starter.h"
#include "tool_editor_link.h"
#include "tool_list_model.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace qor {

namespace {

constexpr const char *ListTitle = "    Tool List";

// Commands by number, for the loops that name, caption and connect them.
enum Command
{
    Browse = 0,  // Command1
    Read = 1,    // Command2
    Edit = 2,    // Command3
    Save = 3,    // Command4
    Close = 4,   // Command5
    NewTool = 5, // Command6
    Delete = 6,  // Command7
    Help = 7,    // Command8
    About = 8,   // Command9
};

// Labels by number.
enum Label
{
    FileLabel = 0,   // Label1: Text12
    MagIniLabel = 1, // Label2: Text13
    ArborLabel = 2,  // Label3: Text14
    ParamLabel = 3,  // Label4: Text15
    TitleLabel = 4,  // Label5: the list title
};

} // namespace

ToolListWindow::ToolListWindow(Workspace &workspace, MessageService &messages,
                               const QString &commandLineFile, QWidget *parent)
    : QWidget(parent), m_ws(workspace), m_messages(messages),
      m_commands(workspace, messages, StartTextEditor)
{
    setObjectName("ToolList");
    setWindowTitle(QString("QORTool  ver_") + ProgramVersion);
    BuildControls();
    BuildLayout();
    SetCaptions();
    SetFonts();
    SetColumnWidths();
    SetTabOrder();
    Connect();

    m_chooseFile = [this](const QString &title, const QString &filter, const QString &start) {
        QFileDialog dialog(this, title, start, filter);
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::AnyFile); // a new name is offered to be created
        dialog.setDefaultSuffix("TTL");
        return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()
                   ? dialog.selectedFiles().constFirst()
                   : QString();
    };

    FormLoad(commandLineFile);
}

ToolListWindow::~ToolListWindow() = default;

void ToolListWindow::SetProgramStarter(ProgramStarter starter)
{
    m_commands.SetProgramStarter(std::move(starter));
}

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

    m_magIni->installEventFilter(this);
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
    for (QLineEdit *box : {m_toolFileName, m_magIni, m_aArbType, m_selectedItem}) {
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
    QWidget *order[] = {m_toolFileName,     m_command[Browse], m_command[Read], m_magIni,
                        m_aArbEditB,        m_autoRead,        m_listV1,        m_command[Edit],
                        m_command[NewTool], m_command[Delete], m_command[Save], m_command[Help],
                        m_command[About],   m_command[Close]};
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

void ToolListWindow::FormLoad(const QString &commandLineFile)
{
    const std::string fileName = InitialToolFileName(
        commandLineFile.toStdString(), QDir::toNativeSeparators(QDir::currentPath()).toStdString(),
        m_ws.Settings);
    m_toolFileName->setText(Qs(fileName));
    m_autoRead->setChecked(m_ws.Settings.GetIniString("Files", "Auto Read", "1") == "1");
    m_command[Save]->setEnabled(false);
    m_aArbType->setText(Qs(m_ws.Text("String", "Str14")));
    if (m_autoRead->isChecked()) {
        m_ws.QuietDefaultRead = true;
        OnCommand2();
        m_ws.QuietDefaultRead = false;
    }
    // With a list to work on, the arrow keys and Enter go to it at once.
    if (m_model->rowCount() > 0) {
        m_listV1->setFocus(Qt::OtherFocusReason);
    } else {
        m_toolFileName->setFocus(Qt::OtherFocusReason);
    }
    if (const QScreen *screen = this->screen()) {
        const QSize room = screen->availableSize();
        resize(std::min(1180, room.width() - 40), std::min(760, room.height() - 60));
    } else {
        resize(1180, 760);
    }
    setMinimumSize(760, 480);
}

std::string ToolListWindow::FileName() const
{
    return m_toolFileName->text().trimmed().toStdString();
}

// Reading and saving

void ToolListWindow::OnCommand1()
{
    const QString filter =
        Qs(m_ws.Text("MSG", "MSG2")) + " (*.TTL *.ttl);;" + Qs(m_ws.Text("MSG", "MSG3")) + " (*)";
    const QString start = Qs(DirOfPath(FileName()));
    const QString chosen = m_chooseFile ? m_chooseFile(QString(), filter, start) : QString();
    if (!chosen.isEmpty()) {
        m_toolFileName->setText(QDir::toNativeSeparators(chosen));
    }
}

void ToolListWindow::OnCommand2()
{
    if (m_commands.Read(FileName())) {
        FillToolList(m_ws.Table.CurrentSlot);
    }
}

void ToolListWindow::OnCommand4()
{
    if (m_commands.Save(FileName(), m_magIni->text().toStdString(), m_autoRead->isChecked()) &&
        m_editor != nullptr) {
        m_editor->HideEditor();
    }
}

void ToolListWindow::OnCommand5()
{
    close();
}

void ToolListWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_splitterPlaced) {
        // The list as wide as its columns, the picture and summary the rest.
        m_splitterPlaced = true;
        const int list = std::min(ListWidth(), m_splitter->width() - 240);
        m_splitter->setSizes({list, m_splitter->width() - list});
    }
}

void ToolListWindow::closeEvent(QCloseEvent *event)
{
    m_commands.StoreFileSettings(FileName(), m_autoRead->isChecked());
    if (m_editor != nullptr) {
        m_editor->HideEditor();
    }
    if (m_info) {
        m_info->close();
    }
    event->accept();
    emit closed();
}

void ToolListWindow::OnAutoReadClicked(bool checked)
{
    m_commands.StoreAutoRead(checked);
}

void ToolListWindow::OnMagIniLeave()
{
    if (m_checkingMagIni) {
        return;
    }
    m_checkingMagIni = true;
    m_commands.CheckMagIni(m_magIni->text().toStdString());
    m_checkingMagIni = false;
}

// Positions

void ToolListWindow::OnCommand3()
{
    const int row = SelectedRow();
    const bool wasEmpty = !m_contents.Rows.HasTool(row);
    const std::optional<int> slot = m_commands.Edit(row);
    if (!slot) {
        return;
    }
    if (wasEmpty) {
        FillToolList(*slot); // the new tool shows in the list at once
    }
    OpenEditor(*slot);
}

void ToolListWindow::OnCommand6()
{
    const std::optional<int> slot = m_commands.NewTool();
    if (!slot) {
        return;
    }
    FillToolList(*slot);
    OpenEditor(*slot);
}

void ToolListWindow::OnCommand7()
{
    const int row = SelectedRow();
    if (m_commands.Delete(row)) {
        FillToolList(row);
    }
}

void ToolListWindow::NewDataSet(int slot)
{
    qor::NewDataSet(m_ws.Table, slot);
}

void ToolListWindow::OpenEditor(int slot)
{
    if (m_editor == nullptr) {
        return;
    }
    m_ws.Table.CurrentSlot = static_cast<std::int16_t>(slot);
    m_editor->SetMagazineNumber(std::to_string(slot + 1));
    m_editor->ShowEditor();
}

void ToolListWindow::ShowStoredTool(int magazineNumber)
{
    if (magazineNumber < 1) { // the file-level arbor was stored
        FillToolList(SelectedRow());
        return;
    }
    m_commands.StartAtFirstPosition();
    FillToolList(magazineNumber - 1);
}

void ToolListWindow::FillToolList(int row)
{
    if (m_model->Fill(m_ws, m_contents)) {
        m_magIni->setText(Qs(m_contents.MagIni));
        m_aArbType->setText(Qs(m_contents.DefaultArbor));
    }
    const int rows = m_model->rowCount();
    m_command[Save]->setEnabled(rows > 0);
    if (rows == 0) {
        return;
    }
    if (m_ws.Table.InitialMagazine >= 1) {
        ShowMagazine(m_ws.Table.InitialMagazine);
    }
    SelectRow(std::clamp(row, 0, rows - 1));
}

void ToolListWindow::SelectRow(int row)
{
    const QModelIndex index = m_model->index(row, 0);
    m_listV1->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                           QItemSelectionModel::Rows);
    m_listV1->scrollTo(index);
}

void ToolListWindow::ShowMagazine(int magazineNumber)
{
    const QModelIndex index = m_model->index(magazineNumber - 1, 0);
    if (index.isValid()) {
        m_listV1->scrollTo(index);
    }
}

int ToolListWindow::SelectedRow() const
{
    const QModelIndexList rows = m_listV1->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void ToolListWindow::OnCurrentRowChanged(const QModelIndex &current)
{
    if (!current.isValid() || !m_commands.Select(current.row())) {
        return;
    }
    ShowParam();
    if (m_editor != nullptr) {
        m_editor->SetMagazineNumber(std::to_string(current.row() + 1));
    }
    ShowArborPicture(false);
}

void ToolListWindow::OnRowDoubleClicked(const QModelIndex &index)
{
    if (!index.isValid()) {
        return;
    }
    m_selectedItem->setText(Qs(m_contents.Rows.RowText(index.row())));
    OnCommand3();
}

std::string ToolListWindow::MakeParamString() const
{
    return qor::MakeParamString(m_ws);
}

void ToolListWindow::ShowParam()
{
    QString text = Qs(MakeParamString());
    text.replace("\r\n", "\n");
    m_param->setPlainText(text);
}

// The file-level arbor

void ToolListWindow::OnArborEdit()
{
    m_ws.ArborEdit = true;
    ShowArborPicture(true);
    if (m_editor != nullptr) {
        m_editor->SetMagazineNumber("0");
        m_editor->ShowEditor();
    }
}

void ToolListWindow::ShowArborPicture(bool on)
{
    m_arborPicture = on;
    m_view->Redraw();
}

// Help and information

void ToolListWindow::OnCommand8()
{
    m_commands.OpenHelp();
}

void ToolListWindow::OnCommand9()
{
    if (!m_info) {
        m_info = new InfoWindow(m_ws, m_messages, this);
        m_info->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    m_info->show();
    m_info->raise();
    m_info->activateWindow();
}

bool ToolListWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_listV1 && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->modifiers() & ~Qt::KeypadModifier) {
            return false;
        }
        switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            OnCommand3();
            return true;
        case Qt::Key_Delete:
            OnCommand7();
            return true;
        case Qt::Key_Insert:
            OnCommand6();
            return true;
        default:
            return false;
        }
    }
    if (watched == m_magIni && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // Leaving the window or opening a context menu does not leave the box.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            OnMagIniLeave();
        }
        return false;
    }
    if (watched == m_aArbEditB) {
        if (event->type() == QEvent::FocusIn) {
            m_ws.ArborEdit = true;
            ShowArborPicture(true);
        } else if (event->type() == QEvent::FocusOut) {
            m_ws.ArborEdit = false;
            ShowArborPicture(false);
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace qor
