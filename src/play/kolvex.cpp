// The rules; see kolvex.h.
#include "play/kolvex.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "config/record.h"

#include <array>

constinit Kolvex kolvex;

namespace {

constexpr char BlockName[] = "quarvello";
constexpr std::int32_t FallThreshold = 1000; // weighted milliseconds of one row
constexpr std::int32_t SoftDropWeight = 4;
constexpr std::int32_t RepeatTime = 200; // ms between sideways steps while a key is held
constexpr std::int32_t LinesOfLevel = 10;
constexpr std::uint32_t PreviewTurn = 4000; // ms
// Only the piece that lands completes rows, so more than its height cannot be full at once.
constexpr std::size_t MostRows = 4;
constexpr std::array<std::uint32_t, MostRows + 1> PointsForRows = {0, 40, 100, 300, 1200};

constexpr std::array<const char*, Piece::TypeCount> FloorTextures = {
    "textures/floor1a.png", "textures/floor1b.png", "textures/floor1c.png", "textures/floor1d.png",
    "textures/floor1e.png", "textures/floor1f.png", "textures/floor1g.png"};

} // namespace

RecordTable<Kolvex> Kolvex::Table() {
    static constexpr RecordKey<Kolvex> Keys[] = {{"showgrid", &Kolvex::showgrid}};
    return {BlockName, Keys};
}

void Kolvex::Load(const char* path) {
    ConfigFile file(path);
    showgrid = true;
    if (!file.IsOpen()) return;
    LogWrite("Kolvex::ReadParameters()\n");
    if (INI_FindBlock(BlockName, &file)) {
        ReadRecord(Table(), *this, &file, &unread);
        SettleUnread(Table(), *this, unread);
        INI_SkipBlock(BlockName, &file);
    } else {
        LogWrite("Kolvex::Load [WARNING] - Quarvello block not found\n");
    }
    highScores.Read(&file);
}

void Kolvex::Save(const char* path) const {
    INI_Writer writer;
    Save(path, writer);
}

void Kolvex::Save(const char* path, INI_Writer& writer) const {
    writer.RewriteBlock(path, BlockName);
    WriteRecord(Table(), *this, writer, &unread);
    highScores.Write(writer);
}

void Kolvex::Start() {
    onGameOver = nullptr;
    onLineCleared = nullptr;
    moveSample = audio.Sample_Add("sounds/block_move.wav");
    rotateSample = audio.Sample_Add("sounds/block_rotate.wav");
    fallSample = audio.Sample_Add("sounds/block_fall.wav");
    explosionSample = audio.Sample_Add("sounds/block_explotion.wav");
    previewTimer.Set(PreviewTurn, false);
    previewTimer.Start();
    NewGame();
    floorTextures.Init();
    for (const char* name : FloorTextures)
        floorTextures.Add(name);
}

void Kolvex::Destroy() {
    for (AudioSample** sample : {&moveSample, &rotateSample, &fallSample, &explosionSample}) {
        audio.Sample_Remove(*sample);
        *sample = nullptr;
    }
    floorTextures.Free();
    blockModels = nullptr;
}

void Kolvex::NewGame() {
    level = 1;
    fallAccumulator = 0;
    score = 0;
    lines = 0;
    repeatTimer = 0;
    moveState = MoveState::None;
    gameOver = false;
    ClearBoard();
    nextPiece.ChooseRandom();
    NextPiece();
}

void Kolvex::NextPiece() {
    moveState = MoveState::None;
    piece = nextPiece;
    piece.Spawn();
    nextPiece.ChooseRandom();
}

void Kolvex::Update() {
    if (gameOver) return;
    const auto delta = static_cast<std::int32_t>(frameClock.frameDelta);
    fallAccumulator += level * delta;
    repeatTimer += delta;
    HandleMove(delta);
    HandleRotate();
    if (fallAccumulator <= FallThreshold) return;
    if (!piece.MoveDown(board)) Land();
    CheckLines();
    fallAccumulator = 0;
}

void Kolvex::HandleMove(std::int32_t delta) {
    switch (moveState) {
    case MoveState::Left:
    case MoveState::Right:
        if (repeatTimer < RepeatTime) break;
        audio.Simple_Play(moveSample);
        if (moveState == MoveState::Left) {
            piece.MoveLeft(board);
        } else {
            piece.MoveRight(board);
        }
        repeatTimer = 0;
        break;
    case MoveState::SoftDrop:
        fallAccumulator += SoftDropWeight * delta;
        break;
    case MoveState::Drop:
        fallAccumulator += FallThreshold;
        break;
    case MoveState::None:
        break;
    }
}

void Kolvex::HandleRotate() {
    if (!rotateRequest) return;
    audio.Simple_Play(rotateSample);
    piece.Rotate(board);
    rotateRequest = false;
}

void Kolvex::Land() {
    for (const PieceBlock& block : piece.blocks) {
        const int row = static_cast<int>(block.y);
        if (row >= Board::Rows) {
            if (onGameOver) onGameOver();
            gameOver = true;
            return;
        }
        board.At(static_cast<int>(block.x), row) = {1, piece.type, piece.angle, block.tile};
    }
    audio.Simple_Play(fallSample);
    NextPiece();
}

void Kolvex::CheckLines() {
    std::array<int, MostRows> full{};
    std::size_t count = 0;
    for (int row = 0; row < Board::Rows && count < MostRows; row++) {
        if (!board.IsFull(row)) continue;
        full[count++] = row;
        board.EmptyRow(row);
    }
    if (count == 0) return;
    for (std::size_t i = 0; i < count && onLineCleared; i++)
        onLineCleared(full[i]);
    audio.Simple_Play(explosionSample);
    AddScore(static_cast<int>(count));
    if (lines >= LinesOfLevel) {
        lines = 0;
        level++;
    }
    // Each removal lowers the rows above it by one.
    for (std::size_t i = 0; i < count; i++)
        board.RemoveRow(full[i] - static_cast<int>(i));
}

void Kolvex::AddScore(int rows) {
    lines += rows;
    // Unsigned, so that a score beyond 31 bits goes on counting in the table of scores.
    const std::uint32_t points =
        static_cast<std::uint32_t>(level + 1) * PointsForRows[static_cast<std::size_t>(rows)];
    score = static_cast<std::int32_t>(static_cast<std::uint32_t>(score) + points);
}

void Kolvex::RotatePressed() {
    rotateRequest = true;
}

void Kolvex::SoftDropPressed() {
    if (moveState == MoveState::Drop) return;
    moveState = MoveState::SoftDrop;
    audio.Simple_Play(moveSample);
}

void Kolvex::SoftDropReleased() {
    if (moveState == MoveState::SoftDrop) moveState = MoveState::None;
}

void Kolvex::LeftPressed() {
    if (moveState == MoveState::Drop) return;
    moveState = MoveState::Left;
    repeatTimer = RepeatTime;
}

void Kolvex::LeftReleased() {
    if (moveState != MoveState::Left) return;
    moveState = MoveState::None;
    repeatTimer = 0;
}

void Kolvex::RightPressed() {
    if (moveState == MoveState::Drop) return;
    moveState = MoveState::Right;
    repeatTimer = RepeatTime;
}

void Kolvex::RightReleased() {
    if (moveState != MoveState::Right) return;
    moveState = MoveState::None;
    repeatTimer = 0;
}

void Kolvex::DropPressed() {
    moveState = MoveState::Drop;
}
